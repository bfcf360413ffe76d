// Loads radiance maps of either raster family.
#pragma once

#include <string>

#include "bkgheader.h"
#include "ghead.h"

inline constexpr const char* RAD_EXT = "rad";

// The loaders return a new array of rows × columns floats, which the caller releases with delete[], or null.

// Whether a TORVALE file has its rows padded to 512-byte records, as hasPaddedRadiances; says so on standard output
// when it has.
bool isOldRadMap(const std::string& path);

// TORVALE, rows padded to records. The outputs describe the samples as a texture. `normalise` maps them to 0 to 1.
float* loadRADFile(
    const std::string& path, int& internalFormat, int& width, int& height, int& border, unsigned& format,
    unsigned& type, int& bytesPerSample, bool normalise);

// TORVALE, contiguous. A file that ends early gives what it holds, the rest 0, and a line on standard output.
float* loadRadFile(const std::string& path, GHead& header);

// BKG, contiguous. What the file lacks is 0. No messages.
float* loadRadFileMORLAN(const std::string& path, BKG_header& header);

// As the family of its first bytes reads it.
float* loadRadFile(const std::string& path);
