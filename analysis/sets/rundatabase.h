// Keeps the rows of a set in an SQLite database.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

#include "problem.h"
#include "runrow.h"

struct sqlite3;
struct sqlite3_stmt;

namespace sorvane {
struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const;
};
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

// The rows of a database one after the other, by ascending bytes of the path. The database must outlive it.
class RunRows {
public:
    // Nothing behind the last row, and when one can't be read: problem() then says why.
    std::optional<RunRow> next();
    const std::optional<Problem>& problem() const { return problem_; }

private:
    friend class RunDatabase;

    Statement statement_;
    int columns_ = 0;
    std::string path_;
    sqlite3* database_ = nullptr;
    std::optional<Problem> problem_;
};

// A table "runs" with a row for each file, by path. Written in transactions, each of which is there whole or not at
// all, wherever the process ends; one process writes at a time. The write-ahead log needs no memory that processes
// share, so that the file may lie on another machine.
class RunDatabase {
public:
    // Opens it, or makes it with these columns behind those of the key. The problem, which names the file, when it
    // can't be opened, is something else, or has other columns.
    static Outcome<RunDatabase> open(const std::string& path, const std::vector<std::string>& columns);
    // One that is there, whatever its columns, to be read.
    static Outcome<RunDatabase> openExisting(const std::string& path);

    // All but the key's, see kRunKeyColumns.
    const std::vector<std::string>& columns() const { return columns_; }
    // What there are rows of.
    Outcome<std::unordered_map<std::string, RunStamp>> stamps() const;

    // Adds rows, or puts them in the place of those with the same path, in one transaction.
    std::optional<Problem> put(std::span<const RunRow> rows);
    RunRows rows() const;

    // The commands that its rows have come by, see runcalls.h.
    std::vector<std::string> calls() const;
    std::optional<Problem> addCalls(std::span<const std::string> calls);

private:
    friend class RunRows;
    struct Close {
        void operator()(sqlite3* database) const;
    };

    explicit RunDatabase(std::string path) : path_(std::move(path)) {}

    std::optional<Problem> openFile(int flags);
    std::optional<Problem> run(const std::string& statement);
    std::optional<Problem> readColumns();
    static Problem problemOf(const std::string& path, sqlite3* database);
    Problem problem() const { return problemOf(path_, database_.get()); }

    std::string path_;
    std::unique_ptr<sqlite3, Close> database_;
    std::vector<std::string> columns_;
};
} // namespace sorvane
