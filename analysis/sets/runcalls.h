// The commands that have put rows into a set's database, so that who reads it can do the same again.
#pragma once

#include <span>
#include <string>
#include <vector>

struct sqlite3;

namespace sorvane {
// In the order in which they came first; none in a database that has no table of them.
std::vector<std::string> readCalls(sqlite3* database);
// Adds those that it has not yet. Whether that was possible; the database tells why not.
bool addCalls(sqlite3* database, std::span<const std::string> calls);
} // namespace sorvane
