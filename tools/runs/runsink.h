// Where the rows of a set go.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "problem.h"
#include "runrow.h"

namespace sorvane {
// A database, or a table as text.
class RunSink {
public:
    virtual ~RunSink() = default;
    RunSink() = default;
    RunSink(const RunSink&) = delete;
    RunSink& operator=(const RunSink&) = delete;

    // Whether there is a row of the file as it is now.
    virtual bool has(const std::string& path) const = 0;
    // Rows by ascending path, but for those that it has.
    virtual std::optional<Problem> put(std::span<const RunRow> rows) = 0;
    // To be called after the last row. Without it a text doesn't appear; a database keeps the rows that it got.
    virtual std::optional<Problem> finish() = 0;
};

// By the ending of the path: .sqlite, .csv or .jsonl. The rows have these columns behind those of the key. A database
// keeps the commands that its rows come by.
Outcome<std::unique_ptr<RunSink>>
openRunSink(const std::string& path, const std::vector<std::string>& columns, const std::vector<std::string>& calls);

// Writes the rows of several databases with the same columns to `output`, as one run over all of their files would.
// `call` is the command that does so.
std::optional<Problem>
mergeRuns(const std::vector<std::string>& parts, const std::string& output, const std::string& call);
} // namespace sorvane
