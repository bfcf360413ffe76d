// Makes the demonstration data.
#pragma once

#include <filesystem>
#include <functional>

#include "outputfile.h"

namespace sorvane {
// Fills `directory`, which is created when it is missing, with the trajectory files ETXYZ.OUT.*
// and the tree data/ that serves as their data root (PELSAR_DATA). The same
// directory always gets the same bytes; the headers hold its absolute path, which must therefore have no line break, no
// blank at an end and no two in a row. With `dataRoot`, an absolute path, the files name that place instead: the tree
// is to be moved there. Ends early, with a failure, when `stops` says so before one of the files. Throws nothing.
[[nodiscard]] Failure makeDemonstration(
    const std::filesystem::path& directory, const std::filesystem::path& dataRoot = {},
    const std::function<bool()>& stops = {});
} // namespace sorvane
