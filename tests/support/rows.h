// Tables of cases that name their columns where they are gone through.
#pragma once

#include <tuple>
#include <vector>

namespace sorvane {
// for (const auto& [text, count] : Rows<std::string, int>{{"", 0}, {"1 2", 2}})
template <class... Columns> using Rows = std::vector<std::tuple<Columns...>>;
} // namespace sorvane
