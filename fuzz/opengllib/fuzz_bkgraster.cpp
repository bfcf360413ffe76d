// A BKG raster file, through the loaders of topography, radiance, normals and classes.
#include <memory>

#include "endprocess.h"
#include "headerconversion.h"
#include "loadclsfile.h"
#include "loadnormfile.h"
#include "loadradfile.h"
#include "loadtopofile.h"
#include "memoryfile.h"
#include "silenterrors.h"

namespace {
template <class T> void touch(T* values, std::int64_t rows, std::int64_t columns) {
    const std::unique_ptr<T[]> owned(values);
    const auto* const bytes = reinterpret_cast<const volatile unsigned char*>(values);
    if (bytes == nullptr || rows * columns <= 0)
        return;
    if (bytes[0] + bytes[rows * columns * std::int64_t{sizeof(T)} - 1] > 510)
        std::abort();
}

struct Ended {};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const MemoryFile file;
    setEndProcessHandler([] { throw Ended{}; });
    file.write(data, size);
    const std::string path = file.path();
    BKG_header header{};
    ReadHeaderOnly(path, header);
    try {
        touch(loadFTopFile(path, header), header.sizeX, header.sizeY);
    } catch (const Ended&) {
        // The file is too short for its header.
    }
    touch(loadRadFileMORLAN(path, header), header.sizeX, header.sizeY);
    touch(loadCLSFileMorlan(path, header), header.sizeX, header.sizeY);
    touch(loadNormFileMORLAN(path), header.sizeX, header.sizeY);
    PrintHeader(header);
    GHead converted{};
    bkg_header2ghead(header, converted);
    ghead2bkg_header(converted, header);
    return 0;
}
