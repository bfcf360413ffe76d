// Reads lines from a text in memory as the C library's line reader reads them from a stream.
#pragma once

#include <cstddef>
#include <string_view>

namespace sorvane {
// A cursor over a text. The text must outlive it.
class TextLines {
public:
    explicit TextLines(std::string_view text) : rest_(text) {}

    // fgets: copies up to size - 1 characters, through the first line feed, into `buffer` and ends them with a zero.
    // A longer line is split; the rest is the next line. Returns false, leaving the buffer alone, at the end.
    bool getLine(char* buffer, std::size_t size);

private:
    std::string_view rest_;
};
} // namespace sorvane
