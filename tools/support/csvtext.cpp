// Texts in comma-separated values.
#include "csvtext.h"

namespace sorvane {
std::string csvText(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos)
        return text;
    std::string quoted = "\"";
    for (const char letter : text)
        quoted.append(letter == '"' ? 2 : 1, letter);
    return quoted + '"';
}
} // namespace sorvane
