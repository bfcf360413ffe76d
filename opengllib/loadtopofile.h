// Loads topography: elevations of either raster family, chosen by the file's extension.
#pragma once

#include <string>

#include "bkgheader.h"
#include "ghead.h"

inline constexpr const char* TOPO_EXT = "top";     // TORVALE: 16-bit samples, rows padded to 512-byte records
inline constexpr const char* FTOP_EXT = "le-ftop"; // BKG: floats

// All return a new array of rows × columns, row by row in the file's order, which the caller releases with delete[], or
// null after a message.

// The minimum and maximum that are found replace MinVals[0] and MaxVals[0]. An unknown packtype, or a file shorter than
// a header, is refused without a message.
float* loadTopoFile(const std::string& path, GHead& header);

// Ends the process with status 1 when the samples can't be held or the file is too short for them: deliberate, these
// files are written by the same tools as their headers.
float* loadFTopFile(const std::string& path, BKG_header& header);

// By extension; the header of a TORVALE file is converted.
float* loadTopoFile(const std::string& path, BKG_header& header);
float* loadTopoFile(const std::string& path);

// TORVALE, with what a mesh needs of the header; untouched on failure, as below.
float* loadTopoFile(const std::string& path, int& cols, int& rows, float& min, float& max, float& xCell, float& yCell);

// BKG, with the same six values.
float* loadFTopFile(const std::string& path, int& cols, int& rows, float& min, float& max, float& xStep, float& yStep);
