// A BKG raster file, through the loaders of topography, radiance, normals and classes.
#include "endprocess.h"
#include "headerconversion.h"
#include "loadclsfile.h"
#include "loadnormfile.h"
#include "loadradfile.h"
#include "loadtopofile.h"
#include "memoryfile.h"
#include "messages.h"
#include "rasterinput.h"

using namespace sorvane;

namespace {
struct Ended {};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MessageCollection unprinted;
    static const MemoryFile file;
    setEndProcessHandler([] { throw Ended{}; });
    file.write(data, size);
    const std::string path = file.path();
    BKG_header header{};
    ReadHeaderOnly(path, header);
    if (isTooSlow(header.sizeX, header.sizeY, data, size))
        return 0;
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
