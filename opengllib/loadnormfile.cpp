// Loads surface normals.
#include "loadnormfile.h"

#include <cstdint>
#include <cstdio>

#include "bkgraster.h"
#include "fail.h"
#include "ghead.h"
#include "rasterfamily.h"
#include "torvaleraster.h"

using namespace sorvane;

namespace {
Vertex3* loadNormals(std::FILE* stream, const char* function, int firstSize, int secondSize) {
    auto normals = readContiguous<Vertex3>(stream, firstSize, secondSize);
    if (normals.values == nullptr)
        fail(
            function, "Could not allocate %d *  %d = %d objects of type Vertex3 for array pData.", firstSize,
            secondSize, shownProduct(firstSize, secondSize));
    return normals.values.release();
}
} // namespace

Vertex3* loadNormFileTORVAL(const std::string& path) {
    const FileHandle stream = openInputFile(path);
    if (stream == nullptr) {
        fail("loadNormFileTORVAL", "Unable to open \"%s\" for reading.", path.c_str());
        return nullptr;
    }
    GHead header{};
    if (std::fread(&header, sizeof header, 1, stream.get()) != 1) {
        fail("loadNormFileTORVAL", "Unable to read header from norm file.");
        return nullptr;
    }
    if (header.packtype >= sorvane::kPacktypesOfNormals)
        return nullptr;
    return loadNormals(stream.get(), "loadNormFileTORVAL", header.nrows, header.ncols);
}

Vertex3* loadNormFileMORLAN(const std::string& path) {
    BKG_header header{};
    const FileHandle stream = ReadHeader(path, header);
    if (stream == nullptr) {
        fail("loadNormFileMORLAN", "Unable to open \"%s\" for reading.", path.c_str());
        return nullptr;
    }
    if (!sorvane::isOfNormals(header)) {
        fail(
            "loadNormFileMORLAN", "\"%s\" is not a norm file (header signature says \"%.*s\" not \"NORM\").",
            path.c_str(), static_cast<int>(sizeof header.headerSignature), header.headerSignature);
        return nullptr;
    }
    return loadNormals(stream.get(), "loadNormFileMORLAN", header.sizeX, header.sizeY);
}

Vertex3* loadNormFile(const std::string& path) {
    return sorvane::familyByFirstBytes(path).loadNormals(path);
}
