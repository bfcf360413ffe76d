// The worst runs of a set: pictures of their scenes and plots of their measures.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include <QByteArray>

#include "measuretext.h"
#include "reportset.h"

namespace sorvane {
struct WorstRequest {
    std::size_t count = 10;
    bool isGreatest = false; // whether the greatest values are the worst, not the least
    bool hasTerrain = false;
    LengthUnit unit = LengthUnit::Unstated;
};

struct WorstRun {
    ReportRun run;
    QByteArray picture;    // PNG; empty without one
    QByteArray plot;       // SVG, for light pages; likewise
    QByteArray darkPlot;   // the same for dark ones
    std::string problem{}; // why something is missing; empty when nothing is
    std::string renderCommand{};
    std::string plotCommand{};
};

struct WorstRuns {
    std::vector<WorstRun> runs;
    bool isWhole = true;    // there is a picture and a plot of each
    bool isComplete = true; // and the pictures lack nothing
};

// The worst first. Reads their files from where the set says, draws them as `sorvane render` and `sorvane plot` do, and
// tells of what they lack.
WorstRuns
worstRunsOf(const ReportSet& set, const WorstRequest& request, const std::function<void(const std::string&)>& say);
} // namespace sorvane
