// Reads rows of a set's database by a condition, and can do nothing else to it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "problem.h"
#include "runrow.h"

struct sqlite3;

namespace sorvane {
class RunReader {
public:
    // The problem, which names the file, when it is no database with a table of runs.
    static Outcome<RunReader> open(const std::string& path);

    const std::string& path() const { return path_; }
    // All, those of the key first.
    const std::vector<std::string>& columns() const { return columns_; }
    // The commands that its rows have come by.
    const std::vector<std::string>& calls() const { return calls_; }
    // "closest_approach_m": that of the miss distance, whatever its unit; empty without one.
    std::string missColumn() const;
    bool hasColumn(const std::string& name) const;

    // Hands out these columns of the rows for which the SQL expression `condition` holds, all when it is empty, by
    // ascending bytes of their paths. An expression is refused that does anything but read the table. The problem when
    // something can't be read; some rows may have been handed out then.
    using TakeRow = std::function<void(std::span<const RunValue>)>;
    std::optional<Problem>
    read(const std::vector<std::string>& columns, const std::string& condition, const TakeRow& take) const;

private:
    struct Close {
        void operator()(sqlite3* database) const;
    };

    explicit RunReader(std::string path) : path_(std::move(path)) {}

    std::string path_;
    std::unique_ptr<sqlite3, Close> database_;
    std::vector<std::string> columns_;
    std::vector<std::string> calls_;
};
} // namespace sorvane
