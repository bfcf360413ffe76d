// Whatever the quick reader accepts must be what sscanf reads, bit for bit.
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "plainfields.h"

using namespace sorvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string line(reinterpret_cast<const char*>(data), size);
    float real = 0.0F;
    float expectedReal = 0.0F;
    if (PlainFields(line).readFloat(real) &&
        (std::sscanf(line.c_str(), "%f", &expectedReal) != 1 ||
         std::bit_cast<std::uint32_t>(real) != std::bit_cast<std::uint32_t>(expectedReal)))
        std::abort();
    int first = 0;
    int second = 0;
    int expectedFirst = 0;
    int expectedSecond = 0;
    char word[2];
    PlainFields fields(line);
    if (fields.readInt(first) && fields.readInt(second) && fields.skipWord() &&
        (std::sscanf(line.c_str(), "%d %d %1s", &expectedFirst, &expectedSecond, word) < 2 || first != expectedFirst ||
         second != expectedSecond))
        std::abort();
    return 0;
}
