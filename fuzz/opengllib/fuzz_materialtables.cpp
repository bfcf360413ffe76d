// The text tables of classes, reflectances and temperatures.
#include <string_view>

#include "loadclstomatfile.h"
#include "loadmaterialtables.h"
#include "memoryfile.h"
#include "messages.h"

using namespace sorvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const MessageCollection unprinted;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    unsigned char table[2 * kMaximumClassPairs];
    unsigned count = 0;
    parseCLStoMat(text, table, count);
    if (count > kMaximumClassPairs)
        std::abort();
    const unsigned char materials = numMats(table, count);
    float pairs[2 * 255];
    parseTemp(text, materials, pairs);
    parseRefs(text, materials, pairs);
    const unsigned char classes[] = {0, 1, 255};
    delete[] cls2mat(classes, sizeof classes, table, count);
    return 0;
}
