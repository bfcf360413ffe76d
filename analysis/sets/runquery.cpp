// Asks a database of runs, for reading alone: which rows there are in which order, and single rows.
#include "runquery.h"

#include <algorithm>
#include <limits>
#include <map>

#include <sqlite3.h>

#include "measuretext.h"
#include "runmemory.h"
#include "sqlvalues.h"

namespace sorvane {
namespace {
constexpr int kBusyMilliseconds = 500; // that another process may hold the file
constexpr double kNothing = std::numeric_limits<double>::quiet_NaN();

std::string withoutEnding(const std::string& column) {
    return namedMeasure(QString::fromStdString(column), 0.0).name.toStdString();
}

// Every column, and those with a unit under their names without it, too, where nothing else is called so.
std::string tableWithShortNames(const std::vector<std::string>& columns) {
    std::vector<std::string> taken = columns;
    std::string also;
    const auto add = [&](const std::string& column, const std::string& name) {
        if (std::ranges::find(taken, name) != taken.end())
            return;
        taken.push_back(name);
        also += ", " + quotedName(column) + " AS " + quotedName(name);
    };
    for (const std::string& column : columns) {
        add(column, withoutEnding(column));
        if (withoutEnding(column) == "closest_approach")
            add(column, "miss_distance");
    }
    return "(SELECT *" + also + " FROM runs)";
}

// Numbers stay; texts are numbered by their bytes once all are known.
class ColumnReader {
public:
    void add(sqlite3_stmt* statement, int column) {
        switch (sqlite3_column_type(statement, column)) {
        case SQLITE_INTEGER:
        case SQLITE_FLOAT:
            return values_.push_back(sqlite3_column_double(statement, column));
        case SQLITE_TEXT: {
            const auto [label, isNew] =
                numbers_.try_emplace(std::get<std::string>(valueIn(statement, column)), numbers_.size());
            texts_.emplace_back(values_.size(), label->second);
            return values_.push_back(kNothing);
        }
        default:
            return values_.push_back(kNothing);
        }
    }

    // Where texts stand beside numbers, the column is one of numbers.
    RunColumn take() {
        const bool isOfTexts =
            !texts_.empty() && std::ranges::all_of(values_, [](double value) { return value != value; });
        RunColumn column{std::move(values_), {}};
        if (!isOfTexts)
            return column;
        std::vector<double> places(numbers_.size());
        for (const auto& [text, number] : numbers_) {
            places[number] = static_cast<double>(column.labels.size());
            column.labels.push_back(text);
        }
        for (const auto& [row, number] : texts_)
            column.values[row] = places[number];
        return column;
    }

private:
    std::vector<double> values_;
    std::map<std::string, std::size_t> numbers_;             // of texts, in order of their appearance
    std::vector<std::pair<std::size_t, std::size_t>> texts_; // rows and the texts' numbers
};
} // namespace

void RunQuery::Close::operator()(sqlite3* database) const {
    sqlite3_close_v2(database); // statements may end later
}

Problem RunQuery::problem() const {
    return (RunMemory::isName(name_) ? std::string() : name_ + ": ") + sqlite3_errmsg(database_.get());
}

Outcome<RunQuery> RunQuery::open(const std::string& name) {
    RunQuery query;
    query.name_ = name;
    const int flags = RunMemory::isName(name) ? SQLITE_OPEN_READWRITE | SQLITE_OPEN_URI : SQLITE_OPEN_READONLY;
    sqlite3* database = nullptr;
    const int status = sqlite3_open_v2(name.c_str(), &database, flags, nullptr);
    query.database_.reset(database);
    if (status != SQLITE_OK)
        return query.problem();
    sqlite3_busy_timeout(database, kBusyMilliseconds);
    const Statement names = prepareStatement(database, "SELECT name FROM pragma_table_info('runs')");
    if (names == nullptr)
        return query.problem();
    int step = SQLITE_ROW;
    while ((step = sqlite3_step(names.get())) == SQLITE_ROW) {
        const RunValue column = valueIn(names.get(), 0);
        if (std::ranges::find(kRunKeyColumns + 1, std::end(kRunKeyColumns), std::get<std::string>(column)) ==
            std::end(kRunKeyColumns))
            query.columns_.push_back(std::get<std::string>(column));
    }
    if (step != SQLITE_DONE)
        return query.problem();
    if (query.columns_.empty() || query.columns_.front() != kRunKeyColumns[0])
        return Problem(name + ": holds no table of runs");
    sqlite3_exec(database, "PRAGMA query_only = 1", nullptr, nullptr, nullptr);
    query.table_ = tableWithShortNames(query.columns_);
    std::string list;
    for (const std::string& column : query.columns_)
        list += (list.empty() ? "" : ", ") + quotedName(column);
    query.row_ = prepareStatement(database, "SELECT " + list + " FROM runs WHERE path = ?");
    return query;
}

Statement RunQuery::prepareQuestion(const RunQuestion& question, std::optional<Problem>& problem) const {
    std::string text = "SELECT path";
    for (const std::string& column : question.columns)
        text += ", " + quotedName(column);
    text += " FROM " + table_;
    if (!question.where.empty())
        text += " WHERE (" + question.where + "\n)"; // which ends a comment
    const std::string order = quotedName(question.order);
    text += " ORDER BY " + order + " IS NULL, " + order + (question.isDescending ? " DESC" : "") + ", path";
    sqlite3_stmt* made = nullptr;
    const char* rest = nullptr;
    if (sqlite3_prepare_v2(database_.get(), text.c_str(), -1, &made, &rest) != SQLITE_OK)
        problem = Problem(sqlite3_errmsg(database_.get()));
    else if (*rest != '\0')
        problem = Problem("a condition is wanted, and no statement");
    return Statement(made);
}

Outcome<RunAnswer> RunQuery::ask(const RunQuestion& question) const {
    std::optional<Problem> fault;
    const Statement asked = prepareQuestion(question, fault);
    if (fault)
        return *fault;
    RunAnswer answer;
    std::vector<ColumnReader> columns(question.columns.size());
    int step = SQLITE_ROW;
    while ((step = sqlite3_step(asked.get())) == SQLITE_ROW) {
        const RunValue path = valueIn(asked.get(), 0);
        const auto* const text = std::get_if<std::string>(&path);
        answer.paths.push_back(text == nullptr ? std::string() : *text);
        for (std::size_t i = 0; i < columns.size(); ++i)
            columns[i].add(asked.get(), static_cast<int>(i) + 1);
    }
    if (step != SQLITE_DONE)
        return problem();
    for (ColumnReader& column : columns)
        answer.columns.push_back(column.take());
    answer.all = answer.paths.size();
    if (question.where.empty())
        return answer;
    const Statement count = prepareStatement(database_.get(), "SELECT count(*) FROM runs");
    if (count == nullptr || sqlite3_step(count.get()) != SQLITE_ROW)
        return problem();
    answer.all = static_cast<std::size_t>(sqlite3_column_int64(count.get(), 0));
    return answer;
}

std::optional<std::vector<RunValue>> RunQuery::row(const std::string& path) const {
    if (row_ == nullptr)
        return std::nullopt;
    sqlite3_reset(row_.get());
    bindValue(row_.get(), 1, path);
    std::optional<std::vector<RunValue>> values;
    if (sqlite3_step(row_.get()) == SQLITE_ROW) {
        values.emplace();
        for (int i = 0; i < static_cast<int>(columns_.size()); ++i)
            values->push_back(valueIn(row_.get(), i));
    }
    sqlite3_reset(row_.get()); // so that the file is free for others
    return values;
}

void RunQuery::interrupt() const {
    sqlite3_interrupt(database_.get());
}
} // namespace sorvane
