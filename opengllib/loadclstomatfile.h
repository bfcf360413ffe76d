// The text table that maps material classes to materials.
#pragma once

#include <string>
#include <string_view>

namespace sorvane {
inline constexpr const char* kClassToMaterialExtension = "cls2mat";

// Text: a line for each pair, "class material".

// A table holds up to this many pairs of bytes: class, material.
inline constexpr unsigned kMaximumClassPairs = 128;
} // namespace sorvane

// Fills `table`, which has room for kMaximumClassPairs pairs, and sets `count`, the number of pairs. A line that holds
// no two numbers repeats those of the line before it (0 at first): deliberate, the count of lines matters to callers.
// False, without a message, when the file can't be opened, and after a message, with the pairs kept, when it has more
// lines than the table.
bool loadCLStoMatFile(const std::string& path, unsigned char* table, unsigned& count);
namespace sorvane {
bool parseCLStoMat(std::string_view text, unsigned char* table, unsigned& count);
} // namespace sorvane

// The largest material number of the table.
unsigned char numMats(const unsigned char* table, unsigned count);

// A new array of the materials of `size` classes, which the caller releases with delete[]. The first pair of a class
// counts; for a class without one null after a message.
unsigned char* cls2mat(const unsigned char* cls, unsigned size, const unsigned char* table, unsigned count);
