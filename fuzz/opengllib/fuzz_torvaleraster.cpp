// A TORVALE raster file, through the loaders of topography, radiance, normals and classes.
#include "headerconversion.h"
#include "loadclsfile.h"
#include "loadnormfile.h"
#include "loadradfile.h"
#include "loadtopofile.h"
#include "memoryfile.h"
#include "messages.h"
#include "rasterinput.h"

using namespace sorvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MessageCollection unprinted;
    static const MemoryFile file;
    file.write(data, size);
    const std::string path = file.path();
    GHead header{};
    ReadHeaderOnly(path, header);
    if (isTooSlow(header.nrows, header.ncols, data, size))
        return 0;
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
