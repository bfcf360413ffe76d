// The text of a printf call, as a string.
#pragma once

#include <cstdarg>
#include <string>

namespace sorvane {
[[gnu::format(printf, 1, 0)]] std::string formattedText(const char* format, std::va_list arguments);
} // namespace sorvane
