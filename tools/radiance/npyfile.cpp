// Pictures of radiances as arrays of NumPy, in version 1.0 of their format.
#include "radiancefile.h"

#include <bit>

namespace sorvane {
std::string npyBytes(const RadianceImage& image) {
    static_assert(std::endian::native == std::endian::little);
    constexpr std::size_t kBeforeText = 10; // magic, version and the text's length
    constexpr std::size_t kMultiple = 64;   // that the data begins at
    std::string text = "{'descr': '<f4', 'fortran_order': False, 'shape': (" + std::to_string(image.height) + ", " +
                       std::to_string(image.width) + "), }";
    text.append((2 * kMultiple - 1 - (kBeforeText + text.size()) % kMultiple) % kMultiple, ' ').append("\n");
    std::string bytes("\x93NUMPY\x01\x00", 8);
    bytes += static_cast<char>(text.size() % 256);
    bytes += static_cast<char>(text.size() / 256);
    bytes += text;
    return bytes.append(reinterpret_cast<const char*>(image.radiances.data()), image.radiances.size() * sizeof(float));
}
} // namespace sorvane
