// The text of a band file.
#include <cstdint>
#include <string_view>

#include "bandfile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    float lambda1 = 0.0F;
    float lambda2 = 0.0F;
    BandFile::parse({reinterpret_cast<const char*>(data), size}, lambda1, lambda2);
    return 0;
}
