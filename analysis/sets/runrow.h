// An engagement as a row of a table of many.
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace sorvane {
// Nothing is what is undefined, or could not be read. Numbers are finite.
using RunValue = std::variant<std::monostate, std::int64_t, double, std::string>;

// A file as it was when its row was made. All zero when there was none.
struct RunStamp {
    std::int64_t bytes = 0;
    std::int64_t modifiedNanoseconds = 0; // since 1970

    bool operator==(const RunStamp&) const = default;
};

RunStamp runStamp(const std::string& path);

// The columns ahead of a row's values.
inline constexpr const char* kRunKeyColumns[] = {"path", "file_bytes", "file_modified_ns"};

struct RunRow {
    std::string path; // as it was named; the key
    RunStamp stamp;
    std::vector<RunValue> values; // of the layout's columns

    bool operator==(const RunRow&) const = default;
};
} // namespace sorvane
