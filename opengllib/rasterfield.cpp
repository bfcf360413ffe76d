// A field of a raster's header, under the name by which the documents and the records know it.
#include "rasterfield.h"

#include <string_view>

namespace sorvane {
RasterFieldValue fieldValue(std::span<const char> text) {
    std::string_view characters(text.data(), text.size());
    characters = characters.substr(0, characters.find('\0'));
    return std::string(characters.substr(0, characters.find_last_not_of(' ') + 1));
}
} // namespace sorvane
