// Writer of Truevision TGA images: uncompressed, 24 bits per pixel, first row at the bottom.
#pragma once

#include <string>

#include "inputfile.h"

class TgaFile {
public:
    // Writes width · 3 · height pixel bytes (blue, green, red; packed rows) behind their header to the file `path`.
    // The header holds 16 bits of each side. False only when the file can't be opened for writing: a full disk is not
    // noticed, deliberately, for callers take true as "there is a file".
    bool Write(const std::string& path, int width, int height, const unsigned char* bytes);

private:
    sorvane::FileHandle file_; // the file being written
};
