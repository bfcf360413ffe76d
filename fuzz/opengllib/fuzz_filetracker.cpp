// Tracked text must come back as the C library's line reader gives it. The first byte chooses the line length.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "filetracker.h"
#include "inputfile.h"

using namespace sorvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2)
        return 0;
    const int lineLength = 2 + data[0];
    std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    FileTracker tracker;
    tracker.setLineLength(lineLength);
    tracker.addText(text);

    const FileHandle stream(::fmemopen(text.data(), text.size(), "r"));
    std::vector<char> expected(static_cast<std::size_t>(lineLength));
    std::vector<char> actual(static_cast<std::size_t>(lineLength));
    while (std::fgets(expected.data(), lineLength, stream.get()) != nullptr)
        if (fgets(actual.data(), lineLength, &tracker) == nullptr || std::string(expected.data()) != actual.data())
            std::abort();
    if (!tracker.AtEnd())
        std::abort();
    return 0;
}
