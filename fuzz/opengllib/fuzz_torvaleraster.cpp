// A TORVALE raster file, through the loaders of topography, radiance, normals and classes.
#include <memory>

#include "headerconversion.h"
#include "loadclsfile.h"
#include "loadnormfile.h"
#include "loadradfile.h"
#include "loadtopofile.h"
#include "memoryfile.h"
#include "silenterrors.h"

namespace {
// Touches every value of an array, so that the sanitizers see one that is too small or was never filled.
template <class T> void touch(T* values, std::int64_t rows, std::int64_t columns) {
    const std::unique_ptr<T[]> owned(values);
    const auto* const bytes = reinterpret_cast<const volatile unsigned char*>(values);
    if (bytes != nullptr && rows * columns > 0) {
        unsigned sum = 0;
        for (std::int64_t i = 0; i < rows * columns * std::int64_t{sizeof(T)}; i += 61)
            sum += bytes[i];
        sum += bytes[rows * columns * std::int64_t{sizeof(T)} - 1];
        if (sum == 0xFFFFFFFF)
            std::abort();
    }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const MemoryFile file;
    file.write(data, size);
    const std::string path = file.path();
    GHead header{};
    float* const elevations = loadTopoFile(path, header);
    touch(elevations, header.nrows, header.ncols);
    float* const radiances = loadRadFile(path, header);
    touch(radiances, header.nrows, header.ncols);
    int outputs[5];
    unsigned types[2];
    float* const padded =
        loadRADFile(path, outputs[0], outputs[1], outputs[2], outputs[3], types[0], types[1], outputs[4], true);
    touch(padded, header.nrows, header.ncols);
    touch(loadNormFileTORVAL(path), header.nrows, header.ncols);
    touch(loadCLSFileTORVALE(path, header), header.nrows, header.ncols);
    touch(loadRadFile(path), 0, 0);
    PrintHeader(header);
    BKG_header converted{};
    ghead2bkg_header(header, converted);
    PrintHeader(converted);
    return 0;
}
