// The families of raster files: one table from which loaders, sizes, identification and descriptions take what differs.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "loadnormfile.h"
#include "problem.h"
#include "rastercontent.h"
#include "rasterfield.h"
#include "rasterlayout.h"
#include "rastersize.h"

struct BKG_header;

namespace sorvane {
// What every family's header says.
struct RasterHeader {
    RasterSize size;
    float cellX = 0.0F;
    float cellY = 0.0F;
    float minimum = 0.0F; // of the samples, of the first band
    float maximum = 0.0F;
    bool isUsable = false; // whether the family's loaders go on from it to the samples
};

// What a header says that can't be right. No samples are read after an error.
struct RasterHeaderFault {
    bool isError = false;
    std::string text;
};

struct RasterDescription {
    RasterHeader header;
    std::vector<RasterField> fields; // all that are interpreted, in the file's order
    // Nothing where nobody reads samples: of an unknown content.
    std::optional<RowLayout> layout;     // as the family lays its samples out
    std::optional<RowLayout> readLayout; // as the loader reads those of this file
    std::optional<Problem> refusal;      // why the loader refuses the file
    std::vector<RasterHeaderFault> faults;
};

// The families are TORVALE and BKG. Established functions called after MORLAN, the first word of its files, are BKG's.
struct RasterFamily {
    const char* name;                       // as users know it
    const std::string& topographyExtension; // a topography belongs to the family of its ending

    // Whether the first bytes (kSignatureBytes, fewer of a shorter file) are those of this family and no other. Null
    // for the one family that has no signature: what no other claims is its.
    bool (*hasSignature)(std::string_view firstBytes);
    // Whether a file of these first bytes could be of the family, for who has nothing else to go by.
    bool (*looksLike)(std::string_view firstBytes);

    // What the header says; of a file that is too short what it holds, the rest 0.
    RasterHeader (*readHeader)(const std::string& path);
    // Of a file that has a whole header.
    RasterDescription (*describe)(const std::string& path, RasterContent content);

    // As the loaders of loadtopofile.h and its neighbours, which choose the family. The topography's header is
    // converted.
    float* (*loadTopography)(const std::string& path, BKG_header& header);
    float* (*loadRadiance)(const std::string& path);
    Vertex3* (*loadNormals)(const std::string& path);
    unsigned char* (*loadClasses)(const std::string& path);
};

inline constexpr std::size_t kSignatureBytes = 16;

// The table.
std::span<const RasterFamily* const> rasterFamilies();

// Of a topography by its ending; null for a name that isn't one's.
const RasterFamily* topographyFamilyOf(const std::string& path);
// Of the other rasters; a file that can't be opened is of the family without a signature.
const RasterFamily& familyByFirstBytes(const std::string& path);
const RasterFamily& familyOfBytes(std::string_view firstBytes);
// Of any raster: by the ending of a topography, else by the first bytes.
const RasterFamily& rasterFamilyOf(const std::string& path);
// Whether the first bytes alone tell that a file is a raster.
bool hasRasterSignature(std::string_view firstBytes);
} // namespace sorvane
