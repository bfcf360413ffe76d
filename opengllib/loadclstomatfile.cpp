// The text table that maps material classes to materials.
#include "loadclstomatfile.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <new>

#include "cnumericlocale.h"
#include "fail.h"
#include "inputfile.h"
#include "textlines.h"

using namespace sorvane;

namespace {
constexpr std::size_t kLineLength = 256;
constexpr std::size_t kMaximumBytes = (std::size_t{kMaximumClassPairs} + 1) * kLineLength;
} // namespace

bool loadCLStoMatFile(const std::string& path, unsigned char* table, unsigned& count) {
    const auto text = readInputFile(path, kMaximumBytes);
    return text && parseCLStoMat(*text, table, count);
}

namespace sorvane {
bool parseCLStoMat(std::string_view text, unsigned char* table, unsigned& count) {
    const CNumericLocale decimalPoint;
    TextLines lines(text);
    char line[kLineLength];
    int cls = 0;
    int material = 0;
    for (count = 0; lines.getLine(line, sizeof line); ++count) {
        if (count == kMaximumClassPairs)
            return fail("loadCLStoMatFile", "Ran out of buffer, exiting.");
        [[maybe_unused]] const int numbers = std::sscanf(line, "%d %d", &cls, &material);
        table[2 * std::size_t{count}] = static_cast<unsigned char>(cls);
        table[2 * std::size_t{count} + 1] = static_cast<unsigned char>(material);
    }
    return true;
}
} // namespace sorvane

unsigned char numMats(const unsigned char* table, unsigned count) {
    unsigned char most = 0;
    for (std::size_t pair = 0; pair < count; ++pair)
        most = std::max(most, table[2 * pair + 1]);
    return most;
}

unsigned char* cls2mat(const unsigned char* cls, unsigned size, const unsigned char* table, unsigned count) {
    std::unique_ptr<unsigned char[]> materials(new (std::nothrow) unsigned char[size]);
    if (materials == nullptr)
        return nullptr;
    const unsigned char* pairs[256]{}; // by class
    for (std::size_t pair = count; pair-- > 0;)
        pairs[table[2 * pair]] = table + 2 * pair;
    for (unsigned i = 0; i < size; ++i) {
        const unsigned char* const pair = pairs[cls[i]];
        if (pair == nullptr) {
            fail("cls2mat", "Did not find a material for index %d (clsNum %d).", static_cast<int>(i), int{cls[i]});
            return nullptr;
        }
        materials[i] = pair[1];
    }
    return materials.release();
}
