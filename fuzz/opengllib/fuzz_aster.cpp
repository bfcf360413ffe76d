// A sample of the spectral library; the first two bytes choose the band.
#include <cstdint>
#include <string_view>

#include "aster.h"

using namespace sorvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2)
        return 0;
    const std::string_view text(reinterpret_cast<const char*>(data + 2), size - 2);
    Aster::bandMean(text, static_cast<float>(data[0]), static_cast<float>(data[1]));
    return 0;
}
