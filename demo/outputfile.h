// Writes whole files.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace sorvane {
// What went wrong, for people; nothing on success.
using Failure = std::optional<std::string>;

// Makes `path` a file with these contents, and the folders on its way. The file appears whole or not at all; one that
// has the contents already is left alone, its time included.
Failure writeOutputFile(const std::filesystem::path& path, std::string_view contents);
} // namespace sorvane
