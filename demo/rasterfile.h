// The contents of raster files of both families.
#pragma once

#include <cstddef>
#include <span>
#include <string>

#include "ghead.h"

namespace sorvane {
// The header of a raster of the demonstration; `fileType` has at most eight letters. The minimum, maximum and mean of
// band 0 are those of `values`.
GHead rasterHeader(int columns, int rows, double cellMetres, const char* fileType, std::span<const float> values = {});

// TORVALE: the header as it is and the samples behind it, as their bytes. Record rows are filled up to a whole number
// of 512-byte records as the packing demands.
enum class Rows { Contiguous, Records };
std::string torvaleFile(const GHead& header, std::span<const std::byte> samples, Rows rows);

// BKG: the converted header and the samples. The date is always the same.
std::string bkgFile(const GHead& header, std::span<const std::byte> samples);
} // namespace sorvane
