// Texts in comma-separated values.
#pragma once

#include <string>

namespace sorvane {
// In quotation marks, its own doubled, where it has a comma, a quotation mark or a line's end; else as it is.
std::string csvText(const std::string& text);
} // namespace sorvane
