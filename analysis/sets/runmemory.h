// A set of rows in memory that is asked as a file of rows is.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

#include "problem.h"
#include "runrow.h"

struct sqlite3;

namespace sorvane {
// Rows that stay as they are; each connection to the database of this name sees them as long as this lives. Of rows
// with one path the last one counts.
class RunMemory {
public:
    static Outcome<RunMemory> make(const std::vector<std::string>& columns, std::span<const RunRow> rows);

    // For RunQuery::open.
    const std::string& name() const { return name_; }
    static bool isName(const std::string& name);

private:
    struct Close {
        void operator()(sqlite3* database) const;
    };

    RunMemory();

    std::string name_;
    std::unique_ptr<sqlite3, Close> database_;
};
} // namespace sorvane
