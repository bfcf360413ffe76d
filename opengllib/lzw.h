// Compression as the Unix program `compress` does it, for files whose names end in ".Z".
#pragma once

#include <string>
#include <string_view>

namespace sorvane {
// The compressed bytes, with the two magic bytes in front, that `uncompress` turns back into `bytes`.
std::string lzwCompressed(std::string_view bytes);
} // namespace sorvane
