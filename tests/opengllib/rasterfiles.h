// Hand-made raster headers and files for the tests of the terrain section.
#pragma once

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "bkgheader.h"
#include "ghead.h"

namespace sorvane {
// The bytes of a value as they stand in a file.
template <class T> std::string bytesOf(const T& value) {
    return {reinterpret_cast<const char*>(&value), sizeof value};
}
template <class T> std::string bytesOf(const std::vector<T>& values) {
    return {reinterpret_cast<const char*>(values.data()), values.size() * sizeof(T)};
}

// What a loader gave away; nothing for null.
template <class T> std::vector<T> taken(T* samples, std::size_t count) {
    const std::unique_ptr<T[]> owned(samples);
    return owned == nullptr ? std::vector<T>() : std::vector<T>(samples, samples + count);
}

inline GHead torvaleHeader(int columns, int rows, int packtype) {
    GHead header{};
    header.ncols = columns;
    header.nrows = rows;
    header.packtype = packtype;
    header.zscale = 1.0F;
    return header;
}

// Rows of `columns` samples, each followed by `padding` bytes that no reader may take for samples.
template <class T> std::string paddedRows(const std::vector<T>& samples, int columns, int padding) {
    std::string bytes;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        bytes += bytesOf(samples[i]);
        if ((i + 1) % static_cast<std::size_t>(columns) == 0)
            bytes += std::string(static_cast<std::size_t>(padding), '\x7f');
    }
    return bytes;
}

inline BKG_header bkgHeader(int columns, int rows, const char* signature = "") {
    BKG_header header{};
    std::memcpy(header.headerSignature, signature, ::strnlen(signature, sizeof header.headerSignature));
    header.sizeX = columns;
    header.sizeY = rows;
    return header;
}

// A BKG file of its own writer with these bytes behind the header.
inline std::string writeBkg(const std::string& path, BKG_header header, const std::string& samples) {
    const FileHandle stream = BeginBKGFile(path, header);
    std::fwrite(samples.data(), 1, samples.size(), stream.get());
    return path;
}
} // namespace sorvane
