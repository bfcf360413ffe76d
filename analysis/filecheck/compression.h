// Tells compressed data, which the viewer reads only from names that end in ".Z".
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "problem.h"

namespace sorvane {
// Why data that begin with `head`, of the file at `path`, are not read as they are; "-" is standard input. Nothing when
// they are not compressed, or when the viewer decompresses a file of this name.
std::optional<Problem> problemOfCompression(std::string_view head, const std::string& path);
// The same of the file at `path`.
std::optional<Problem> problemOfCompression(const std::string& path);
} // namespace sorvane
