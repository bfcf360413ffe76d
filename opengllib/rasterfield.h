// A field of a raster's header, under the name by which the documents and the records know it.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace sorvane {
// Text without what fills up its fixed width.
using RasterFieldValue = std::variant<std::string, std::int32_t, float, std::vector<float>, std::vector<double>>;

struct RasterField {
    const char* name;
    RasterFieldValue value;
};

// What a field that is a member of a header's struct holds.
RasterFieldValue fieldValue(std::span<const char> text); // the characters up to a zero byte, without blanks at the end
inline RasterFieldValue fieldValue(std::int32_t number) {
    return number;
}
inline RasterFieldValue fieldValue(float number) {
    return number;
}
template <class Number, std::size_t N> RasterFieldValue fieldValue(const Number (&numbers)[N]) {
    return std::vector<Number>(numbers, numbers + N);
}
template <std::size_t N> RasterFieldValue fieldValue(const char (&text)[N]) {
    return fieldValue(std::span<const char>(text));
}
} // namespace sorvane
