// Reads a trajectory into a row of a set.
#pragma once

#include <atomic>
#include <cstdint>

#include "radiometer.h"
#include "runlayout.h"

namespace sorvane {
// What rows with measures of radiation need.
struct RunRadiometry {
    explicit RunRadiometry(const RadiometryOptions& options) : radiometer(options, BandChoice::Named) {}

    Radiometer radiometer;
    std::atomic<std::int64_t> lacking = 0; // engagements whose target's files could not be used
};

// A pure function of the file: may be called from several threads at once. A file that can't be read, or holds no
// samples, gives a row with its fault and its path's fields alone.
// `radiometry` is needed by a layout with radiation.
RunRow readRun(const std::string& path, const RunLayout& layout, RunRadiometry* radiometry = nullptr);
} // namespace sorvane
