// The TORVALE family of rasters: how its samples lie behind the header, and its row of the table of families.
#pragma once

#include <optional>

#include "ghead.h"
#include "rastercontent.h"
#include "rasterlayout.h"

namespace sorvane {
struct RasterFamily;

extern const RasterFamily kTorvaleFamily;

// Rows that fill whole 512-byte records, of samples of the size that the content has; nothing of an unknown content.
// Normals are not padded.
//
//     content      a sample's bytes                     padded by
//     topography   2, an unsigned integer times zscale  the packing
//     radiance     4, a float                           the packing
//     normals      12, three floats                     nothing
//     classes      as packed, of which the low counts   the packing
//
// That two of them are padded by a packing that isn't theirs is deliberate: the existing files are.
std::optional<RowLayout> rowLayout(const GHead& header, RasterContent content);

// Whether rows of radiances are padded. Compares the file's length with a number of samples, not of bytes, so that
// every whole file of floats counts as padded: deliberate, the existing files are.
bool hasPaddedRadiances(const GHead& header, std::int64_t dataBytes);

// Normals are read whatever a small packtype says.
inline constexpr int kPacktypesOfNormals = 4;
} // namespace sorvane
