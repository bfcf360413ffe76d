// The commands that have put rows into a set's database, so that who reads it can do the same again.
#include "runcalls.h"

#include <sqlite3.h>

#include "sqlvalues.h"

namespace sorvane {
std::vector<std::string> readCalls(sqlite3* database) {
    std::vector<std::string> calls;
    const Statement all = prepareStatement(database, "SELECT call FROM calls ORDER BY number");
    while (all != nullptr && sqlite3_step(all.get()) == SQLITE_ROW) {
        const RunValue call = valueIn(all.get(), 0);
        if (const auto* const text = std::get_if<std::string>(&call))
            calls.push_back(*text);
    }
    return calls;
}

bool addCalls(sqlite3* database, std::span<const std::string> calls) {
    constexpr const char* kTable = "CREATE TABLE IF NOT EXISTS calls (number INTEGER PRIMARY KEY, call TEXT UNIQUE)";
    if (sqlite3_exec(database, kTable, nullptr, nullptr, nullptr) != SQLITE_OK)
        return false;
    const Statement insert = prepareStatement(database, "INSERT OR IGNORE INTO calls (call) VALUES (?)");
    bool isWritten = insert != nullptr;
    for (const std::string& call : calls) {
        if (!isWritten)
            break;
        bindValue(insert.get(), 1, call);
        isWritten = sqlite3_step(insert.get()) == SQLITE_DONE && sqlite3_reset(insert.get()) == SQLITE_OK;
    }
    return isWritten;
}
} // namespace sorvane
