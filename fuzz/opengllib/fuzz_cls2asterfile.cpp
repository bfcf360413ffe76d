// The text of a table of classes and samples.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "cls2asterfile.h"

using namespace sorvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const auto& line : Cls2AsterFile::parse({reinterpret_cast<const char*>(data), size}))
        if (line.sample.size() > 511)
            std::abort();
    return 0;
}
