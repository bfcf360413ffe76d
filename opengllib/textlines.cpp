// Reads lines from a text in memory as the C library's line reader reads them from a stream.
#include "textlines.h"

#include <algorithm>
#include <cstring>

namespace sorvane {
bool TextLines::getLine(char* buffer, std::size_t size) {
    if (rest_.empty() || size < 2)
        return false;
    const std::size_t lineFeed = rest_.find('\n');
    const std::size_t lineLength = lineFeed == std::string_view::npos ? rest_.size() : lineFeed + 1;
    const std::size_t length = std::min(lineLength, size - 1);
    std::memcpy(buffer, rest_.data(), length);
    buffer[length] = '\0';
    rest_.remove_prefix(length);
    return true;
}
} // namespace sorvane
