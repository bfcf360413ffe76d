// Loads the material class of a raster's cells, of either raster family.
#pragma once

#include <string>

#include "bkgheader.h"
#include "ghead.h"

inline constexpr const char* CLS_EXT = "cls";

// A new array of rows × columns class numbers, which the caller releases with delete[], or null.

// Rows padded to 512-byte records. Of samples of more than one byte the low byte counts. An unknown packtype is refused
// without a message.
unsigned char* loadCLSFileTORVALE(const std::string& path, GHead& header);
// Contiguous bytes; those that the file lacks are 0. No messages.
unsigned char* loadCLSFileMorlan(const std::string& path, BKG_header& header);
// As the family of its first bytes reads it.
unsigned char* loadCLSFile(const std::string& path);
