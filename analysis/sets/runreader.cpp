// Reads rows of a set's database by a condition, and can do nothing else to it.
#include "runreader.h"

#include <algorithm>
#include <filesystem>

#include <sqlite3.h>

#include "measure.h"
#include "runcalls.h"
#include "sqlvalues.h"

namespace sorvane {
namespace {
constexpr int kBusyMilliseconds = 10000; // that another process may hold the file

bool isName(const char* given, const char* name) {
    return given != nullptr && sqlite3_stricmp(given, name) == 0;
}

// What statements may do: read the table of runs, with functions that stay within the database.
int allow(void* /*unused*/, int action, const char* table, const char* name, const char*, const char*) {
    const bool isAllowed = action == SQLITE_SELECT || (action == SQLITE_READ && isName(table, "runs")) ||
                           (action == SQLITE_FUNCTION && !isName(name, "load_extension"));
    return isAllowed ? SQLITE_OK : SQLITE_DENY;
}
} // namespace

void RunReader::Close::operator()(sqlite3* database) const {
    sqlite3_close(database);
}

Outcome<RunReader> RunReader::open(const std::string& path) {
    std::error_code ignored;
    if (!std::filesystem::exists(path, ignored))
        return Problem(path + ": there is no such file");
    if (std::filesystem::is_directory(path, ignored))
        return Problem(path + ": is a directory");
    RunReader reader(path);
    sqlite3* database = nullptr;
    const int status = sqlite3_open_v2(path.c_str(), &database, SQLITE_OPEN_READONLY, nullptr);
    reader.database_.reset(database);
    const auto problem = [&] {
        return Problem(path + ": " + sqlite3_errmsg(database));
    };
    if (status != SQLITE_OK)
        return problem();
    sqlite3_busy_timeout(database, kBusyMilliseconds);
    // A word in double quotes is a column, never a text.
    sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    const Statement names = prepareStatement(database, "SELECT name FROM pragma_table_info('runs')");
    int step = names == nullptr ? SQLITE_ERROR : SQLITE_ROW;
    while (step == SQLITE_ROW && (step = sqlite3_step(names.get())) == SQLITE_ROW)
        reader.columns_.push_back(std::get<std::string>(valueIn(names.get(), 0)));
    if (step != SQLITE_DONE)
        return problem();
    if (!std::ranges::all_of(kRunKeyColumns, [&](const char* key) { return reader.hasColumn(key); }))
        return Problem(path + ": holds no table of runs");
    reader.calls_ = readCalls(database);
    sqlite3_exec(database, "PRAGMA query_only = ON", nullptr, nullptr, nullptr);
    sqlite3_set_authorizer(database, allow, nullptr);
    return reader;
}

bool RunReader::hasColumn(const std::string& name) const {
    return std::ranges::find(columns_, name) != columns_.end();
}

std::string RunReader::missColumn() const {
    for (const LengthUnit unit : {LengthUnit::Metres, LengthUnit::Feet, LengthUnit::Unstated}) {
        std::string name = columnName(*findMeasure("closest-approach"), unit).toStdString();
        if (hasColumn(name))
            return name;
    }
    return {};
}

std::optional<Problem>
RunReader::read(const std::vector<std::string>& columns, const std::string& condition, const TakeRow& take) const {
    std::string text = "SELECT ";
    for (const std::string& column : columns) {
        if (!hasColumn(column))
            return Problem(path_ + ": there is no column " + column);
        text += (text.ends_with(' ') ? "" : ", ") + quotedName(column);
    }
    text += " FROM runs";
    if (!condition.empty())
        text += " WHERE (" + condition + "\n)"; // a comment ends with its line
    text += " ORDER BY path";
    sqlite3_stmt* made = nullptr;
    const char* rest = nullptr;
    const int status = sqlite3_prepare_v2(database_.get(), text.c_str(), -1, &made, &rest);
    const Statement statement(made);
    if (status != SQLITE_OK)
        return Problem(path_ + ": " + (condition.empty() ? "" : condition + ": ") + sqlite3_errmsg(database_.get()));
    if (*rest != '\0')
        return Problem(condition + ": is more than a condition");
    std::vector<RunValue> row(columns.size());
    int step = SQLITE_DONE;
    while ((step = sqlite3_step(statement.get())) == SQLITE_ROW) {
        for (std::size_t i = 0; i < row.size(); ++i)
            row[i] = valueIn(statement.get(), static_cast<int>(i));
        take(row);
    }
    if (step != SQLITE_DONE)
        return Problem(path_ + ": " + sqlite3_errmsg(database_.get()));
    return std::nullopt;
}
} // namespace sorvane
