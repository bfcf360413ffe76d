// Puts a report together.
#pragma once

#include <string>
#include <vector>

#include "reportset.h"
#include "worstruns.h"

namespace sorvane {
struct ReportPage {
    std::string title;
    ReportSet set;
    WorstRequest worstRequest;
    WorstRuns worst;
    std::vector<std::string> commands; // that make the page and its numbers
};

// A page of HTML that needs nothing beside it. The same report gives the same bytes.
std::string htmlOf(const ReportPage& page);
} // namespace sorvane
