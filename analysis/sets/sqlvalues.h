// Values in and out of SQLite's statements.
#pragma once

#include <string>

#include "rundatabase.h"

namespace sorvane {
// Null when the text is no statement; the database tells why.
Statement prepareStatement(sqlite3* database, const std::string& text);
// A column's name for a statement.
std::string quotedName(const std::string& name);
// `place` counts from 1, `column` from 0.
void bindValue(sqlite3_stmt* statement, int place, const RunValue& value);
RunValue valueIn(sqlite3_stmt* statement, int column);
} // namespace sorvane
