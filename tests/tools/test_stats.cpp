// `sorvane stats`.
#include <cmath>
#include <filesystem>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "commandrun.h"
#include "runset.h"
#include "temporarydirectory.h"

using namespace sorvane;
using testing::AllOf;
using testing::HasSubstr;

namespace {
using Json = nlohmann::json;

class StatsTest : public testing::Test {
protected:
    StatsTest() {
        // Misses of 1 to 9 m: those of "a" odd, those of "007" even, and three that don't count.
        std::vector<PlainRun> runs;
        for (std::int64_t i = 1; i <= 9; ++i)
            runs.push_back(
                {"r" + std::to_string(i), static_cast<double>(i), i <= 4 ? std::int64_t{1} : std::int64_t{0},
                 i % 2 == 1 ? RunValue("a") : RunValue("007")});
        runs[0].miss = std::int64_t{1};
        runs[8].decoyed = {};
        runs.push_back({"x1", 1000.0, std::int64_t{1}, "a", 2});
        runs.push_back({"x2", {}, {}, {}, 1});
        runs.push_back({"x3", {}, std::int64_t{1}, "a"});
        writeRunSet(set, runs);
    }
    CommandRun stats(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "stats");
        return runCommand(arguments);
    }
    Json json(std::vector<std::string> more = {}) {
        more.insert(more.begin(), {set, "--json"});
        const CommandRun run = stats(more);
        EXPECT_EQ(run.status, ExitStatus::Success) << run.err;
        return Json::parse(run.out);
    }

    TemporaryDirectory folder;
    std::string set = folder.file("night.sqlite");
};

TEST_F(StatsTest, CountsWhatHasNumbersAndNoFaults) {
    const Json told = json({"--miss", "4.5,4,0"})["set"];
    EXPECT_EQ(told["column"], "closest_approach_m");
    EXPECT_EQ(told["runs"], 12);
    EXPECT_EQ(told["with_faults"], 2);
    EXPECT_EQ(told["undefined"], 1);
    EXPECT_EQ(told["n"], 9);
    EXPECT_EQ(told["mean"], 5.0);
    EXPECT_DOUBLE_EQ(told["standard_deviation"], std::sqrt(7.5));
    EXPECT_EQ(told["quantiles"][1]["value"], 1.4);
    EXPECT_EQ(told["within"][0]["count"], 4);
    EXPECT_EQ(told["within"][1]["count"], 4) << "4 lies within 4";
    EXPECT_EQ(told["within"][2]["interval"][0], 0.0);
    EXPECT_EQ(told["decoyed"]["count"], 4);
    EXPECT_EQ(told["decoyed"]["of"], 8) << "of one it isn't known";
    EXPECT_EQ(json({"--with-faults"})["set"]["n"], 10);
    EXPECT_EQ(json({"--column", "decoyed"})["set"]["n"], 9);
}

TEST_F(StatsTest, GroupsStandInOrder) {
    const Json groups = json({"--by", "pattern"})["set"]["groups"];
    ASSERT_EQ(groups.size(), 3U);
    EXPECT_EQ(groups[0]["value"], Json());
    EXPECT_EQ(groups[0]["n"], 0);
    EXPECT_EQ(groups[0]["mean"], Json());
    EXPECT_EQ(groups[1]["value"], "007");
    EXPECT_EQ(groups[1]["mean"], 5.0);
    EXPECT_EQ(groups[2]["n"], 5);
    EXPECT_EQ(groups[2]["with_faults"], 1);
    const Json misses = json({"--by", "closest_approach_m", "--with-faults"})["set"]["groups"];
    EXPECT_EQ(misses[1]["value"], 1) << "an integer among other numbers";
    EXPECT_EQ(misses[2]["value"], 2.0);
}

TEST_F(StatsTest, ConditionsReadAndNothingElse) {
    const std::uintmax_t size = std::filesystem::file_size(set);
    EXPECT_EQ(json({"--where", "pattern = 'a' -- those"})["set"]["n"], 5);
    EXPECT_EQ(
        json(
            {"--where",
             "closest_approach_m < (SELECT avg(closest_approach_m) FROM runs WHERE faults = 0)"})["set"]["n"],
        4);
    const std::string other = folder.file("other.sqlite");
    const struct {
        std::string condition;
        const char* text;
    } rows[] = {
        {"pattern = \"a\"", "no such column: a"},
        {"pattern =", "syntax error"},
        {"1); DELETE FROM runs; --", "is more than a condition"},
        {"1); ATTACH '" + other + "' AS other; --", "is more than a condition"},
        {"load_extension('x')", "not authorized"},
        {"path IN (SELECT name FROM sqlite_master)", "prohibited"},
        {"closest_approach_m > 1e9", "there is no run to count"},
    };
    for (const auto& row : rows) {
        const CommandRun run = stats({set, "--where", row.condition});
        EXPECT_EQ(run.status, ExitStatus::Failed) << row.condition;
        EXPECT_THAT(run.err, AllOf(HasSubstr("sorvane stats: "), HasSubstr(row.text)));
        EXPECT_EQ(run.out, "");
    }
    EXPECT_EQ(json()["set"]["runs"], 12);
    EXPECT_EQ(std::filesystem::file_size(set), size);
    EXPECT_FALSE(std::filesystem::exists(other));
}

TEST_F(StatsTest, ComparesTwoSets) {
    const Json told =
        json({"--against", set, "--where", "pattern = 'a'", "--against-where", "pattern = '007'", "--miss", "4"});
    EXPECT_EQ(told["against"]["n"], 4);
    const Json& difference = told["difference"];
    EXPECT_EQ(difference["median"], 0.0);
    EXPECT_DOUBLE_EQ(difference["within"][0]["difference"], 2.0 / 5.0 - 2.0 / 4.0);
    EXPECT_DOUBLE_EQ(difference["decoyed"]["difference"], 0.0);
    EXPECT_DOUBLE_EQ(difference["kolmogorov_smirnov"]["distance"], 0.2);
    EXPECT_EQ(difference["kolmogorov_smirnov"]["p"], 1.0);
    EXPECT_DOUBLE_EQ(difference["mann_whitney"]["greater"], 0.5);
    EXPECT_THAT(
        stats({set, "--against", set, "--where", "decoyed", "--against-where", "NOT decoyed"}).out,
        AllOf(
            HasSubstr("the first less the second\n"),
            HasSubstr("Mann-Whitney: the first is greater in 0.0 % of pairs")));
}

TEST_F(StatsTest, TextAndTable) {
    const CommandRun text = stats({set, "--miss", "5", "--by", "pattern"});
    EXPECT_THAT(text.out, HasSubstr(": 12 runs, 3 runs left out: 2 with faults, 1 without closest_approach_m\n"));
    EXPECT_THAT(text.out, HasSubstr("  closest approach                95 % interval\n"));
    EXPECT_THAT(text.out, HasSubstr("  median              5.000 m  "));
    EXPECT_THAT(text.out, HasSubstr("  within 5 m           55.6 %    26.7 to 81.1 %  5 of 9\n"));
    EXPECT_THAT(text.out, HasSubstr("  007         4         0  5.000 m  "));
    EXPECT_THAT(text.out, HasSubstr("  none        1         1        -"));
    const CommandRun one = stats({set, "--where", "path = 'r3'"});
    EXPECT_THAT(one.out, AllOf(HasSubstr(": 1 run\n"), HasSubstr("  standard deviation        -\n")));
    const CommandRun table = stats({set, "--csv", "--miss", "5"});
    EXPECT_THAT(table.out, HasSubstr(",,quantile,0.5,5,"));
    EXPECT_THAT(table.out, HasSubstr(",,within,5,0.5555555555555556,0.26665"));
}

TEST_F(StatsTest, DamagedSetsEndWithAMessage) {
    const std::string whole = readWholeFile(set);
    folder.write(
        "text.sqlite", "this is no database, but a text that is long enough to have a header of one\n" + whole);
    folder.write("empty.sqlite", "");
    folder.write("cut.sqlite", whole.substr(0, whole.size() / 2));
    std::string spoilt = whole;
    spoilt.replace(4096, 64, 64, '\xff'); // the page behind the first one is the table's
    folder.write("spoilt.sqlite", spoilt);
    writeRunSet(folder.file("none.sqlite"), {});
    writeRunSet(folder.file("null.sqlite"), {{"a", {}, {}, {}}, {"b", "text", {}, {}}, {"c", {}, {}, {}, 1}});
    ASSERT_TRUE(RunDatabase::open(folder.file("other.sqlite"), {"shape"}));
    const struct {
        const char* file;
        const char* text;
    } rows[] = {
        {"nothing.sqlite", "there is no such file"},
        {"", "is a directory"},
        {"text.sqlite", "file is not a database"},
        {"empty.sqlite", "holds no table of runs"},
        {"cut.sqlite", "malformed"},
        {"spoilt.sqlite", "malformed"},
        {"none.sqlite", "none.sqlite: there is no run to count\n"},
        {"null.sqlite", "no run to count; 3 runs left out: 1 with faults, 2 without closest_approach_m\n"},
        {"other.sqlite", "has no column of miss distances"},
    };
    for (const auto& row : rows) {
        const CommandRun run = stats({folder.file(row.file)});
        EXPECT_EQ(run.status, ExitStatus::Failed) << row.file;
        EXPECT_EQ(run.out, "") << row.file;
        EXPECT_THAT(run.err, AllOf(HasSubstr("sorvane stats: "), HasSubstr(row.text)));
    }
    const std::vector<std::pair<std::vector<std::string>, const char*>> usage{
        {{set, "--by", "shape"}, "there is no column shape"},
        {{set, "--column", "shape"}, "there is no column shape"},
        {{set, "--miss", "5,x"}, "--miss: finite numbers with commas between them are wanted"},
        {{set, "--miss", "nan"}, "finite numbers"},
        {{set, "--json", "--csv"}, "excludes"},
        {{set, "--by", "pattern", "--against", set}, "don't go together"},
        {{set, "--against-where", "1"}, "is for --against"},
        {{set, "--against", folder.file("none.sqlite")}, "there is no run to count"},
    };
    for (const auto& [arguments, message] : usage) {
        const CommandRun run = stats(arguments);
        EXPECT_EQ(run.status, ExitStatus::Failed) << message;
        EXPECT_THAT(run.err, HasSubstr(message));
    }
}
} // namespace
