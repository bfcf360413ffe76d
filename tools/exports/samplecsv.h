// Writes the samples of a trajectory as comma-separated values.
#pragma once

#include <ostream>
#include <span>

#include "measuretext.h"
#include "sample.h"

namespace sorvane {
// A line of names, then a line for each sample: time, the positions and attitudes of target and threat, the gyro,
// range, closing speed and aspect (as encounterOn gives them). Numbers are the shortest that read back exactly; the
// names of lengths and speeds end in `unit`.
void writeSampleCsv(std::ostream& out, std::span<const Sample> samples, LengthUnit unit);
} // namespace sorvane
