// Reflectance files: parsing any text, then asking for classes and slots.
#include <cstdint>
#include <cstdlib>

#include "brdffile.h"

using namespace sorvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    BrdfFile file;
    if (!file.parse({reinterpret_cast<const char*>(data), size}))
        return 0;
    for (int facet = -2; facet < 64; ++facet) {
        const int slot = file.SortedFacetIndex(facet);
        if (slot < -1 || slot >= file.numFacets())
            std::abort();
    }
    return 0;
}
