// The BKG family of rasters: how its samples lie behind the header, and its row of the table of families.
#pragma once

#include <optional>

#include "bkgheader.h"
#include "rastercontent.h"
#include "rasterlayout.h"

namespace sorvane {
struct RasterFamily;

extern const RasterFamily kBkgFamily;

// Rows without gaps: a float for each height and each radiance, three for a normal, a byte for a class. Nothing of an
// unknown content.
std::optional<RowLayout> rowLayout(const BKG_header& header, RasterContent content);

// Whether the header says that the samples are normals.
bool isOfNormals(const BKG_header& header);
} // namespace sorvane
