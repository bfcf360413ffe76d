// Text tables of two numbers per material.
#include "loadmaterialtables.h"

#include <cstdio>

#include "cnumericlocale.h"
#include "fail.h"
#include "inputfile.h"
#include "messages.h"
#include "textlines.h"

using namespace sorvane;

namespace {
constexpr std::size_t kLineLength = 256;

bool readPair(const char* line, float* first, float* second) {
    return std::sscanf(line, "%f %f", first, second) == 2;
}
} // namespace

std::vector<sorvane::MaterialValues> sorvane::readTemperatures(std::string_view text) {
    const CNumericLocale decimalPoint;
    TextLines lines(text);
    char line[kLineLength];
    std::vector<MaterialValues> materials;
    MaterialValues values;
    while (lines.getLine(line, sizeof line) && readPair(line, &values.temperature, &values.emissivity))
        materials.push_back(values);
    return materials;
}

bool loadRefsFile(const std::string& path, unsigned count, float* out) {
    const auto text = readInputFile(path, count * kLineLength);
    if (!text)
        return fail("loadRefsFile", "Unable to open file \"%s\" for reading.", path.c_str());
    return parseRefs(*text, count, out);
}

namespace sorvane {
// The numbers in both messages are off by one, the second one the other way: deliberate, as users know them.
bool parseRefs(std::string_view text, unsigned count, float* out) {
    const CNumericLocale decimalPoint;
    TextLines lines(text);
    char line[kLineLength];
    for (unsigned i = 0; i < count; ++i) {
        if (!lines.getLine(line, sizeof line))
            return fail(
                "loadRefsFile",
                "Unexpected EOF when trying to read material data. Expected %d materials but only read %d.",
                static_cast<int>(count), static_cast<int>(i) - 1);
        float* const pair = out + 2 * std::size_t{i};
        if (!readPair(line, pair, pair + 1))
            return fail(
                "loadRefsFile", "Malformed line %d. Expected 2 floats, but received \"%s\".", static_cast<int>(i + 2),
                line);
    }
    return true;
}
} // namespace sorvane

bool loadTempFile(const std::string& path, unsigned char count, float* out) {
    const auto text = readInputFile(path, count * kLineLength);
    if (!text)
        return fail("loadTempFile", "Unable to open \"%s\" for reading.", path.c_str());
    return parseTemp(*text, count, out);
}

namespace sorvane {
bool parseTemp(std::string_view text, unsigned char count, float* out) {
    const CNumericLocale decimalPoint;
    TextLines lines(text);
    char line[kLineLength];
    for (int i = 0; i < count; ++i) {
        if (!lines.getLine(line, sizeof line))
            return fail(
                "loadTempFile", "Unexpected EOF when trying to read temp file. Expected %d lines but only found %d.",
                int{count}, i + 1);
        float* const pair = out + std::ptrdiff_t{2} * i;
        if (!readPair(line, pair, pair + 1)) {
            fail("loadTempFile", "Malformed line %d: \"%s\". Expected 2 floats.", i + 1, line);
            printMessage("LoadTempFile::loadTempFile: unexpected line format: %s", line);
            return false;
        }
    }
    printMessage("output result");
    for (std::size_t i = 0; i < count; ++i)
        printMessage("%f %f", double{out[2 * i]}, double{out[2 * i + 1]});
    return true;
}
} // namespace sorvane
