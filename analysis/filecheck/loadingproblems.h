// What someone who has loaded a trajectory should be told of it, in the words of `sorvane check`.
#pragma once

#include <string>
#include <vector>

class etxyz;

namespace sorvane {
// Why the file at `path` gave no engagement, when `loaded` is null; else what its engagement does not have from the
// file as it stands there: words that could not be read, a target that another one stands in for. Empty when all is
// well. Reads the file once more only where the loading has come upon something.
std::vector<std::string> problemsOfLoading(const std::string& path, const etxyz* loaded);
} // namespace sorvane
