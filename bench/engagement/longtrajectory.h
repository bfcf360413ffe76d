// The trajectory that the benchmarks load: 300,000 samples with four flares each, about 150 MB.
#pragma once

#include <QString>

inline constexpr int kSampleCount = 300'000;

// Written into a temporary folder on first use and removed at the end. PELSAR_DATA is set to that folder, which holds
// the stock atmosphere that loading falls back to.
QString longTrajectory();

// The same file through `compress`.
QString compressedTrajectory();
