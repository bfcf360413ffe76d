// Rotor files: any text. Faults end the process, which is caught here.
#include <array>
#include <cstdint>
#include <cstdio>
#include <string>

#include "endprocess.h"
#include "inputfile.h"
#include "rotor.h"

using namespace sorvane;

namespace {
struct ProcessEnded {};
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const EndProcessHandler previous = setEndProcessHandler([] { throw ProcessEnded(); });
    static_cast<void>(previous);
    if (size == 0)
        return 0;
    std::string text(reinterpret_cast<const char*>(data), size);
    const FileHandle stream(::fmemopen(text.data(), text.size(), "r"));
    try {
        const Rotor rotor(stream.get());
        std::array<float, 16> matrix{};
        for (int number = 1; number <= rotor.getRotorCount(); ++number)
            rotor.getRotorMatrix(number, 1.5F, matrix.data());
    } catch (const ProcessEnded&) {
        return 0;
    }
    return 0;
}
