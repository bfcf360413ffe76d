// Writes the samples of a trajectory, or their flares, as comma-separated values.
#pragma once

#include <ostream>
#include <span>

#include "measure.h"

namespace sorvane {
// A line of names, then a line for each sample: time, the positions and attitudes of target and threat, the gyro,
// range, closing speed and aspect (as encounterOn gives them), and the measures but for these three. The file's numbers
// are the shortest that read back exactly; the names of lengths and speeds end in the engagement's unit.
void writeSampleCsv(
    std::ostream& out, const MeasuredEngagement& engagement, std::span<const Measure* const> measures = {});

// A line of names, then a line for each flare of each sample: time, the flare's identifier, its position and the
// measures.
void writeFlareCsv(std::ostream& out, const MeasuredEngagement& engagement, std::span<const Measure* const> measures);
} // namespace sorvane
