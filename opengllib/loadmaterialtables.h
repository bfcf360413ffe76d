// Text tables of two numbers per material: reflectances and temperatures.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sorvane {
inline constexpr const char* kTemperatureExtension = "temp";

// A line of a table of temperatures.
struct MaterialValues {
    float temperature = 0.0F;
    float emissivity = 0.0F;
};

// The lines of the table up to the first that holds no two numbers, however many they are.
std::vector<MaterialValues> readTemperatures(std::string_view text);

// Text, a line of two numbers for each material in their order; lines are cut into pieces of 255 characters.
} // namespace sorvane

// Fill `out`, which has room for two floats for each of `count` materials, from as many lines. False after a message
// when the file can't be opened or a line is missing or malformed; the pairs before it are kept.
bool loadRefsFile(const std::string& path, unsigned count, float* out);
namespace sorvane {
bool parseRefs(std::string_view text, unsigned count, float* out);
} // namespace sorvane

// The same, and prints the pairs on standard output.
bool loadTempFile(const std::string& path, unsigned char count, float* out);
namespace sorvane {
bool parseTemp(std::string_view text, unsigned char count, float* out);
} // namespace sorvane
