// Asks a database of runs, for reading alone: which rows there are in which order, and single rows.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "problem.h"
#include "rundatabase.h"

namespace sorvane {
struct RunQuestion {
    // SQL over the columns, true of the rows that are wanted; of all when it is empty. A column may be named without
    // the ending that tells its unit, the closest approach as miss_distance too.
    std::string where{};
    std::string order = "path"; // a column's name
    bool isDescending = false;
    std::vector<std::string> columns{}; // whose values of all rows are wanted

    bool operator==(const RunQuestion&) const = default;
};

// A column's values, for plots.
struct RunColumn {
    std::vector<double> values;      // by row; NaN where there is none
    std::vector<std::string> labels; // of a column of texts: they are what the values number, by their bytes
};

struct RunAnswer {
    std::vector<std::string> paths; // of the rows, in order; those without a value last, equal ones by path
    std::vector<RunColumn> columns; // those of the question
    std::size_t all = 0;            // how many rows there are without a condition
};

// One connection, for one thread at a time.
class RunQuery {
public:
    // A file, or what RunMemory has. The problem, which names it, when it can't be read or is something else.
    static Outcome<RunQuery> open(const std::string& name);

    // "path", then all others but the file's size and time.
    const std::vector<std::string>& columns() const { return columns_; }
    // Goes over the whole table. The problem when the condition is none, or when it was interrupted.
    Outcome<RunAnswer> ask(const RunQuestion& question) const;
    // The columns of one row; nothing when it isn't there, or not any more.
    std::optional<std::vector<RunValue>> row(const std::string& path) const;

    // Ends an ask() of another thread.
    void interrupt() const;

private:
    struct Close {
        void operator()(sqlite3* database) const;
    };

    RunQuery() = default;
    Problem problem() const;
    // Null after a problem.
    Statement prepareQuestion(const RunQuestion& question, std::optional<Problem>& problem) const;

    std::string name_;
    std::unique_ptr<sqlite3, Close> database_;
    std::vector<std::string> columns_;
    std::string table_; // what rows are selected from: the columns under all of their names
    Statement row_;
};
} // namespace sorvane
