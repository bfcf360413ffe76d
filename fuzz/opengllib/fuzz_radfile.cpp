// Radiance files: any bytes, expecting the number of facets that they announce.
#include <cstdint>
#include <cstring>

#include "radfile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::int32_t facets = 0;
    if (size >= 44)
        std::memcpy(&facets, data + 40, sizeof facets);
    RadFile file;
    if (file.parse({reinterpret_cast<const char*>(data), size}, facets) && facets > 0)
        file.DumpArrays(facets, "/dev/null");
    return 0;
}
