// Values in and out of SQLite's statements.
#include "sqlvalues.h"

#include <sqlite3.h>

namespace sorvane {
namespace {
struct Bind {
    sqlite3_stmt* statement;
    int place;

    void operator()(std::monostate /*nothing*/) const { sqlite3_bind_null(statement, place); }
    void operator()(std::int64_t value) const { sqlite3_bind_int64(statement, place, value); }
    void operator()(double value) const { sqlite3_bind_double(statement, place, value); }
    void operator()(const std::string& value) const {
        sqlite3_bind_text64(statement, place, value.data(), value.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    }
};
} // namespace

Statement prepareStatement(sqlite3* database, const std::string& text) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database, text.c_str(), -1, &statement, nullptr);
    return Statement(statement);
}

std::string quotedName(const std::string& name) {
    std::string text = "\"";
    for (const char letter : name)
        text.append(letter == '"' ? 2 : 1, letter);
    return text + '"';
}

void bindValue(sqlite3_stmt* statement, int place, const RunValue& value) {
    std::visit(Bind{statement, place}, value);
}

RunValue valueIn(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER:
        return std::int64_t{sqlite3_column_int64(statement, column)};
    case SQLITE_FLOAT:
        return sqlite3_column_double(statement, column);
    case SQLITE_TEXT: {
        const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
        return std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(statement, column)));
    }
    default:
        return {};
    }
}
} // namespace sorvane
