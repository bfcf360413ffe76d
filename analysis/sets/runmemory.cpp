// A set of rows in memory that is asked as a file of rows is.
#include "runmemory.h"

#include <atomic>

#include <sqlite3.h>

#include "sqlvalues.h"

namespace sorvane {
namespace {
constexpr const char* kPrefix = "file:sorvane-runs-";

std::string newName() {
    static std::atomic<int> last = 0;
    return kPrefix + std::to_string(++last) + "?mode=memory&cache=shared";
}

bool isRun(sqlite3* database, const std::string& statement) {
    return sqlite3_exec(database, statement.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

bool putAll(sqlite3* database, const std::vector<std::string>& columns, std::span<const RunRow> rows) {
    std::string table = "CREATE TABLE runs (path TEXT PRIMARY KEY, file_bytes INTEGER, file_modified_ns INTEGER";
    std::string insertion = "INSERT OR REPLACE INTO runs VALUES (?, ?, ?";
    for (const std::string& column : columns) {
        table += ", " + quotedName(column);
        insertion += ", ?";
    }
    if (!isRun(database, table + ") WITHOUT ROWID") || !isRun(database, "BEGIN"))
        return false;
    const Statement insert = prepareStatement(database, insertion + ")");
    if (insert == nullptr)
        return false;
    for (const RunRow& row : rows) {
        int place = 0;
        for (const RunValue& key :
             {RunValue(row.path), RunValue(row.stamp.bytes), RunValue(row.stamp.modifiedNanoseconds)})
            bindValue(insert.get(), ++place, key);
        for (const RunValue& value : row.values)
            bindValue(insert.get(), ++place, value);
        if (sqlite3_step(insert.get()) != SQLITE_DONE || sqlite3_reset(insert.get()) != SQLITE_OK)
            return false;
    }
    return isRun(database, "COMMIT");
}
} // namespace

RunMemory::RunMemory() : name_(newName()) {}

void RunMemory::Close::operator()(sqlite3* database) const {
    sqlite3_close(database);
}

bool RunMemory::isName(const std::string& name) {
    return name.starts_with(kPrefix);
}

Outcome<RunMemory> RunMemory::make(const std::vector<std::string>& columns, std::span<const RunRow> rows) {
    RunMemory memory;
    sqlite3* database = nullptr;
    constexpr int kFlags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_URI;
    const int status = sqlite3_open_v2(memory.name_.c_str(), &database, kFlags, nullptr);
    memory.database_.reset(database);
    if (status != SQLITE_OK || !putAll(database, columns, rows))
        return Problem(std::string("rows in memory: ") + sqlite3_errmsg(database));
    return memory;
}
} // namespace sorvane
