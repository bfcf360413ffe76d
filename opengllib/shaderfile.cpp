// The text of a shader source file, cached by path.
#include "shaderfile.h"

#include <algorithm>
#include <cstdio>
#include <new>

#include "fail.h"
#include "inputfile.h"

using namespace sorvane;

std::vector<shaderTrackingInfo> shaderCache;

namespace {
constexpr std::size_t kMaximumRows = 256;
constexpr std::int64_t kMaximumSize = std::int64_t{256} << 20; // far above any shader; a larger file is something else
} // namespace

int inCache(const std::string& path) {
    for (std::size_t row = 0; row < shaderCache.size(); ++row)
        if (shaderCache[row].path == path)
            return static_cast<int>(row);
    return -1;
}

namespace sorvane {
void forgetShader(const std::string& path) {
    std::erase_if(shaderCache, [&](const shaderTrackingInfo& row) { return isSamePath(row.path, path); });
}
} // namespace sorvane

bool ShaderFile::allocate(const char* function, std::int64_t size) {
    buf_.reset(size > kMaximumSize ? nullptr : new (std::nothrow) char[static_cast<std::size_t>(size) + 1]);
    size_ = buf_ == nullptr ? 0 : size;
    if (buf_ != nullptr)
        return true;
    const int bytes = static_cast<int>(size + 1);
    return fail(function, "Unable to allocate %d GLchars (%d bytes) for array buf_.", bytes, bytes);
}

void ShaderFile::clear() {
    buf_.reset();
    size_ = 0;
}

bool ShaderFile::Copy(const ShaderFile& other) {
    if (this == &other)
        return true;
    setName(other.Name());
    clear();
    if (other.buf_ == nullptr)
        return true;
    if (!allocate("Copy", other.size_))
        return false;
    std::copy_n(other.buf_.get(), other.size_ + 1, buf_.get());
    return true;
}

bool ShaderFile::Load(const std::string& path) {
    if (const int row = inCache(path); row >= 0) {
        Copy(shaderCache[static_cast<std::size_t>(row)].file); // a failure is reported, and found when compiling
        return true;
    }
    setName(path);
    clear();
    const std::int64_t size = File::Size(path, true);
    if (size <= 0)
        return fail("Load", "No source code found for shader %s.", path.c_str());
    if (!allocate("Load", size))
        return false;
    const FileHandle stream = openInputFile(path);
    if (stream == nullptr) {
        clear();
        return fail("Load", "Unable to open \"%s\" for reading.", path.c_str());
    }
    const auto wanted = static_cast<std::size_t>(size);
    const std::size_t got = std::fread(buf_.get(), 1, wanted, stream.get());
    buf_[got] = '\0';
    if (got < wanted) {
        clear();
        // The count read comes first although the words say the reverse.
        return fail(
            "Load", "Unexpected EOF when reading file (expected %d bytes, read %d).", static_cast<int>(got),
            static_cast<int>(size));
    }
    if (shaderCache.size() > kMaximumRows)
        shaderCache.clear();
    shaderCache.push_back({path, *this});
    return true;
}
