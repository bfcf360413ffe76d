// The text of a shader source file, cached by path.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "file.h"

class ShaderFile : public File {
public:
    ShaderFile() = default;
    ShaderFile(const ShaderFile& other) : File(other) { Copy(other); }
    ShaderFile& operator=(const ShaderFile& other) {
        Copy(other);
        return *this;
    }
    ~ShaderFile() = default;

    // Reads the file `path`, or copies it from the cache. On failure prints one message, returns false and leaves the
    // text null. A missing and an empty file are both "No source code".
    bool Load(const std::string& path);

    // Takes over name and text; false after a message when there is no room for the text.
    bool Copy(const ShaderFile& other);

    // Ends in a zero; null unless loaded.
    const char* text() const { return buf_.get(); }
    // Bytes of the text without the closing zero.
    std::int64_t size() const { return size_; }

private:
    bool allocate(const char* function, std::int64_t size);
    void clear();

    std::unique_ptr<char[]> buf_;
    std::int64_t size_ = 0;
};

// One row of the cache of sources.
struct shaderTrackingInfo {
    std::string path;
    ShaderFile file;
};
extern std::vector<shaderTrackingInfo> shaderCache;

namespace sorvane {
// Takes the file `path` out of the cache.
void forgetShader(const std::string& path);
} // namespace sorvane

// The index of the first row of the cache whose path equals `path`, or -1.
int inCache(const std::string& path);
