// Makes radiance files of bodies.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace sorvane {
// The bytes of a radiance file, in millionths of W/cm²/sr. What no reader looks at is not zero.
inline std::string radBytes(const std::vector<float>& radiances, const std::vector<float>& emittances) {
    std::vector<std::int32_t> header;
    for (std::int32_t word = 0; word < 19; ++word)
        header.push_back(word == 10 ? static_cast<std::int32_t>(radiances.size()) : -1 - word);
    const auto bytes = [](const auto& words) {
        return std::string(reinterpret_cast<const char*>(words.data()), 4 * words.size());
    };
    return bytes(header) + bytes(radiances) + "padding." + bytes(emittances);
}
} // namespace sorvane
