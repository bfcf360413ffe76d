// Keeps the rows of a set in an SQLite database.
#include "rundatabase.h"

#include <sqlite3.h>

#include "runcalls.h"
#include "sqlvalues.h"

namespace sorvane {
namespace {
constexpr int kBusyMilliseconds = 10000; // that another process may hold the file

std::string textIn(sqlite3_stmt* statement, int column) {
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
    return text == nullptr ? std::string()
                           : std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
}

RunStamp stampIn(sqlite3_stmt* statement) {
    return {sqlite3_column_int64(statement, 1), sqlite3_column_int64(statement, 2)};
}

std::string keyList() {
    std::string list;
    for (const char* const name : kRunKeyColumns)
        list += (list.empty() ? "" : ", ") + quotedName(name);
    return list;
}

constexpr int kKeys = std::size(kRunKeyColumns);
} // namespace

void RunDatabase::Close::operator()(sqlite3* database) const {
    // What is finished is one file that programs without write access read, too.
    sqlite3_exec(database, "PRAGMA journal_mode = DELETE", nullptr, nullptr, nullptr);
    sqlite3_close(database);
}

Problem RunDatabase::problemOf(const std::string& path, sqlite3* database) {
    return path + ": " + sqlite3_errmsg(database);
}

std::optional<Problem> RunDatabase::openFile(int flags) {
    sqlite3* database = nullptr;
    const int status = sqlite3_open_v2(path_.c_str(), &database, flags, nullptr);
    database_.reset(database);
    if (status != SQLITE_OK)
        return problem();
    sqlite3_busy_timeout(database, kBusyMilliseconds);
    return std::nullopt;
}

std::optional<Problem> RunDatabase::run(const std::string& statement) {
    if (sqlite3_exec(database_.get(), statement.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        return problem();
    return std::nullopt;
}

std::optional<Problem> RunDatabase::readColumns() {
    columns_.clear();
    const Statement names = prepareStatement(database_.get(), "PRAGMA table_info(runs)");
    if (names == nullptr)
        return problem();
    std::size_t keys = 0;
    int status = SQLITE_ROW;
    while ((status = sqlite3_step(names.get())) == SQLITE_ROW) {
        const std::string name = textIn(names.get(), 1);
        if (keys < std::size(kRunKeyColumns) && name == kRunKeyColumns[keys])
            ++keys;
        else
            columns_.push_back(name);
    }
    if (status != SQLITE_DONE)
        return problem();
    if (keys < std::size(kRunKeyColumns))
        return Problem(path_ + ": holds no table of runs");
    return std::nullopt;
}

Outcome<RunDatabase> RunDatabase::open(const std::string& path, const std::vector<std::string>& columns) {
    RunDatabase database(path);
    if (const auto problem = database.openFile(SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE))
        return *problem;
    std::string table = "CREATE TABLE IF NOT EXISTS runs (path TEXT PRIMARY KEY, file_bytes INTEGER, file_modified_ns "
                        "INTEGER";
    for (const std::string& column : columns)
        table += ", " + quotedName(column);
    for (const std::string& statement :
         {std::string("PRAGMA locking_mode = EXCLUSIVE"), std::string("PRAGMA journal_mode = WAL"),
          std::string("PRAGMA synchronous = NORMAL"), table + ") WITHOUT ROWID"})
        if (const auto problem = database.run(statement))
            return *problem;
    if (const auto problem = database.readColumns())
        return *problem;
    if (database.columns_ != columns)
        return Problem(path + ": was made with other columns: of another --unit or --name, or another version");
    return database;
}

Outcome<RunDatabase> RunDatabase::openExisting(const std::string& path) {
    RunDatabase database(path);
    if (const auto problem = database.openFile(SQLITE_OPEN_READONLY))
        return *problem;
    if (const auto problem = database.readColumns())
        return *problem;
    return database;
}

Outcome<std::unordered_map<std::string, RunStamp>> RunDatabase::stamps() const {
    const Statement all = prepareStatement(database_.get(), "SELECT " + keyList() + " FROM runs");
    if (all == nullptr)
        return problem();
    std::unordered_map<std::string, RunStamp> stamps;
    int status = SQLITE_ROW;
    while ((status = sqlite3_step(all.get())) == SQLITE_ROW)
        stamps.emplace(textIn(all.get(), 0), stampIn(all.get()));
    if (status != SQLITE_DONE)
        return problem();
    return stamps;
}

std::optional<Problem> RunDatabase::put(std::span<const RunRow> rows) {
    std::string text = "INSERT OR REPLACE INTO runs VALUES (?, ?, ?";
    for (std::size_t i = 0; i < columns_.size(); ++i)
        text += ", ?";
    if (auto problem = run("BEGIN IMMEDIATE"))
        return problem;
    const Statement insert = prepareStatement(database_.get(), text + ")");
    bool isWritten = insert != nullptr;
    for (const RunRow& row : rows) {
        if (!isWritten)
            break;
        bindValue(insert.get(), 1, row.path);
        bindValue(insert.get(), 2, row.stamp.bytes);
        bindValue(insert.get(), 3, row.stamp.modifiedNanoseconds);
        int place = kKeys;
        for (const RunValue& value : row.values)
            bindValue(insert.get(), ++place, value);
        isWritten = sqlite3_step(insert.get()) == SQLITE_DONE && sqlite3_reset(insert.get()) == SQLITE_OK;
    }
    if (isWritten)
        return run("COMMIT");
    const Problem reason = problem();
    run("ROLLBACK");
    return reason;
}

RunRows RunDatabase::rows() const {
    std::string list = keyList();
    for (const std::string& column : columns_)
        list += ", " + quotedName(column);
    RunRows rows;
    rows.statement_ = prepareStatement(database_.get(), "SELECT " + list + " FROM runs ORDER BY path");
    rows.columns_ = static_cast<int>(columns_.size());
    rows.path_ = path_;
    rows.database_ = database_.get();
    return rows;
}

std::vector<std::string> RunDatabase::calls() const {
    return readCalls(database_.get());
}

std::optional<Problem> RunDatabase::addCalls(std::span<const std::string> calls) {
    return sorvane::addCalls(database_.get(), calls) ? std::nullopt : std::optional(problem());
}

void FinalizeStatement::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

std::optional<RunRow> RunRows::next() {
    const int status = problem_ ? SQLITE_DONE : sqlite3_step(statement_.get());
    if (status != SQLITE_ROW) {
        if (status != SQLITE_DONE)
            problem_ = RunDatabase::problemOf(path_, database_);
        return std::nullopt;
    }
    RunRow row{textIn(statement_.get(), 0), stampIn(statement_.get()), {}};
    for (int i = 0; i < columns_; ++i)
        row.values.push_back(valueIn(statement_.get(), kKeys + i));
    return row;
}
} // namespace sorvane
