// What is asked of databases of runs.
#include <gmock/gmock.h>

#include "rows.h"
#include "runmemory.h"
#include "runquery.h"
#include "temporarydirectory.h"

using namespace sorvane;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsNan;

namespace {
using Paths = std::vector<std::string>;

const std::vector<std::string> kColumns = {"closest_approach_m", "decoyed", "pattern", "closest_approach"};

// Two runs have the same miss, one has none.
RunMemory fourRuns() {
    const std::vector<RunRow> rows = {
        {"d", {}, {7.5, std::int64_t{0}, "B", {}}},
        {"c", {}, {RunValue(), std::int64_t{1}, "A", {}}},
        {"a", {}, {7.5, std::int64_t{1}, "B", {}}},
        {"b", {}, {2.0, std::int64_t{0}, RunValue(), 1.0}}};
    return *RunMemory::make(kColumns, rows);
}

TEST(RunQuery, OrdersAndChoosesRows) {
    const RunMemory memory = fourRuns();
    const Outcome<RunQuery> query = RunQuery::open(memory.name());
    ASSERT_TRUE(query);
    EXPECT_THAT(query->columns(), ElementsAre("path", kColumns[0], kColumns[1], kColumns[2], kColumns[3]));
    for (const auto& [question, paths] : Rows<RunQuestion, Paths>{
             {{}, {"a", "b", "c", "d"}},
             {{.isDescending = true}, {"d", "c", "b", "a"}},
             {{.order = "closest_approach_m"}, {"b", "a", "d", "c"}},
             {{.order = "closest_approach_m", .isDescending = true}, {"a", "d", "b", "c"}},
             {{.where = "closest_approach_m < 5"}, {"b"}},
             {{.where = "miss_distance > 5 AND decoyed"}, {"a"}},
             {{.where = "closest_approach IS NULL"}, {"a", "c", "d"}}, // a column's own name counts
             {{.where = "pattern = 'B' OR 0 -- so far"}, {"a", "d"}},
             {{.where = "path LIKE 'x%'"}, {}}}) {
        const Outcome<RunAnswer> answer = query->ask(question);
        ASSERT_TRUE(answer) << question.where << ": " << answer.problem().text;
        EXPECT_EQ(answer->paths, paths) << question.where << ' ' << question.order;
        EXPECT_EQ(answer->all, 4U);
    }
}

TEST(RunQuery, HandsOutColumnsForPlotsAndSingleRows) {
    const RunMemory memory = fourRuns();
    const Outcome<RunQuery> query = RunQuery::open(memory.name());
    const Outcome<RunAnswer> answer = query->ask({.columns = {"closest_approach_m", "pattern", "decoyed"}});
    ASSERT_TRUE(answer);
    EXPECT_THAT(answer->columns[0].values, ElementsAre(7.5, 2.0, IsNan(), 7.5));
    EXPECT_THAT(answer->columns[0].labels, ElementsAre());
    EXPECT_THAT(answer->columns[1].values, ElementsAre(1.0, IsNan(), 0.0, 1.0));
    EXPECT_THAT(answer->columns[1].labels, ElementsAre("A", "B"));
    EXPECT_THAT(answer->columns[2].values, ElementsAre(1.0, 0.0, 1.0, 0.0));
    EXPECT_THAT(*query->row("b"), ElementsAre("b", 2.0, std::int64_t{0}, RunValue(), 1.0));
    EXPECT_FALSE(query->row("gone"));
}

TEST(RunQuery, RefusesWhatIsNoCondition) {
    const RunMemory memory = fourRuns();
    const Outcome<RunQuery> query = RunQuery::open(memory.name());
    for (const auto& [where, problem] : Rows<const char*, const char*>{
             {"miss < 5", "no such column: miss"},
             {"decoyed =", "syntax error"},
             {"1); DELETE FROM runs; --", "no statement"},
             {"1); SELECT (1", "no statement"}}) {
        const Outcome<RunAnswer> answer = query->ask({.where = where});
        ASSERT_FALSE(answer) << where;
        EXPECT_THAT(answer.problem().text, HasSubstr(problem));
    }
    EXPECT_EQ(query->ask({})->paths.size(), 4U);
}

TEST(RunQuery, SaysWhatIsNoDatabaseOfRuns) {
    const TemporaryDirectory folder;
    const std::string text = folder.write("text.sqlite", std::string(2000, 'x'));
    const std::string empty = folder.write("empty.sqlite", "");
    for (const auto& [path, problem] : Rows<std::string, const char*>{
             {text, "file is not a database"},
             {empty, "holds no table of runs"},
             {folder.file("none.sqlite"), "unable to open database file"}}) {
        const Outcome<RunQuery> query = RunQuery::open(path);
        ASSERT_FALSE(query) << path;
        EXPECT_EQ(query.problem().text, path + ": " + problem);
    }
    EXPECT_FALSE(std::filesystem::exists(folder.file("none.sqlite"))) << "asking makes no file";
}

TEST(RunQuery, AFileIsReadAndStaysAsItIs) {
    const TemporaryDirectory folder;
    const std::string path = folder.file("night.sqlite");
    const std::vector<RunRow> rows = {{"a", {1, 2}, {3.0}}};
    ASSERT_FALSE(RunDatabase::open(path, {"end_s"})->put(rows));
    const std::string before = readWholeFile(path);
    const Outcome<RunQuery> query = RunQuery::open(path);
    EXPECT_THAT(query->ask({.where = "\"end\" > 2"})->paths, ElementsAre("a"));
    EXPECT_THAT(*query->row("a"), ElementsAre("a", 3.0));
    EXPECT_EQ(readWholeFile(path), before);
}
} // namespace
