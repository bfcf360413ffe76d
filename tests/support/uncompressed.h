// What the system's own programs make of a ".Z" file.
#pragma once

#include <array>
#include <cstdio>
#include <string>

namespace sorvane {
// The standard output of `program -c path`; the path must hold no single quote.
inline std::string uncompressed(const std::string& program, const std::string& path) {
    const std::string command = program + " -c '" + path + "'";
    std::FILE* const output = ::popen(command.c_str(), "r");
    if (output == nullptr)
        return "can not run " + program;
    std::string bytes;
    std::array<char, 65536> piece{};
    for (std::size_t got = 0; (got = std::fread(piece.data(), 1, piece.size(), output)) > 0;)
        bytes.append(piece.data(), got);
    if (::pclose(output) != 0)
        bytes += program + " failed";
    return bytes;
}
} // namespace sorvane
