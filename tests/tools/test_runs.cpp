// `sorvane runs`.
#include <filesystem>
#include <random>
#include <sstream>
#include <thread>

#include <gmock/gmock.h>

#include <QProcess>

#include "commandrun.h"
#include "environmentvariable.h"
#include "rundatabase.h"
#include "runreading.h"
#include "runtext.h"
#include "shard.h"
#include "survey.h"
#include "temporarydirectory.h"
#include "trajectorytext.h"

using namespace sorvane;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {
// The threat passes `miss` units beside the target at 2 s, with 100 units a second.
std::string passText(double miss) {
    QByteArray text = trajectoryHeader("white", "4");
    for (int i = 0; i <= 4; ++i)
        text += trajectoryRecord(
            {.time = double(i), .target = {0.0, miss, -1000.0}, .threat = {100.0 * (i - 2), 0.0, -1000.0}});
    return text.toStdString();
}

class RunsTest : public testing::Test {
protected:
    std::string addPass(const std::string& name, double miss) { return folder.write("in/" + name, passText(miss)); }
    CommandRun runs(std::vector<std::string> more) {
        more.insert(more.begin(), "runs");
        return runCommand(more);
    }
    CommandRun runsTo(const std::string& output, std::vector<std::string> more = {}) {
        more.insert(more.begin(), {folder.file("in"), "-o", output});
        return runs(more);
    }
    // A table's rows by name of the column.
    using Row = std::map<std::string, std::string>;
    static std::vector<Row> table(const std::string& path) {
        std::istringstream text(readWholeFile(path));
        const auto cells = [](const std::string& line) {
            std::vector<std::string> parts;
            std::istringstream stream(line + ',');
            for (std::string part; std::getline(stream, part, ',');)
                parts.push_back(part);
            return parts;
        };
        std::string line;
        std::getline(text, line);
        const std::vector<std::string> names = cells(line);
        std::vector<Row> rows;
        while (std::getline(text, line)) {
            const std::vector<std::string> values = cells(line);
            Row& row = rows.emplace_back();
            for (std::size_t i = 0; i < names.size(); ++i)
                row[names[i]] = values.at(i);
        }
        return rows;
    }

    TemporaryDirectory folder;
    std::string database = folder.file("night.sqlite");
};

TEST_F(RunsTest, ARowHoldsMeasuresHeaderAndFieldsOfThePath) {
    addPass("b/case12_flare007.ETXYZ.OUT.x", 12.5);
    addPass("a/ETXYZ.OUT.plain", 3.0);
    folder.write("in/readme.txt", "no trajectory\n");
    const std::string csv = folder.file("t.csv");
    const CommandRun run = runsTo(csv, {"--unit", "m", "--name", R"(case(?<case>\d+)_flare(?<pattern>\w+)\.)"});
    EXPECT_EQ(run.status, ExitStatus::Success) << run.err;
    std::vector<Row> rows = table(csv);
    ASSERT_EQ(rows.size(), 2U) << "what is no trajectory is left out below a directory";
    EXPECT_THAT(rows[0]["path"], HasSubstr("a/ETXYZ.OUT.plain"));
    EXPECT_EQ(rows[0]["case"] + rows[0]["pattern"], "");
    Row& row = rows[1];
    for (const auto& [name, value] : std::vector<std::pair<const char*, const char*>>{
             {"case", "12"},
             {"pattern", "007"},
             {"faults", "0"},
             {"samples", "5"},
             {"flares", "0"},
             {"end_s", "4"},
             {"text_9", "white"},
             {"terrain_triple_a", "1 2 3"},
             {"field_of_view_deg", "4"},
             {"closest_approach_m", "12.5"},
             {"closest_approach_time_s", "2"},
             {"closest_approach_relative_speed_m_per_s", "100"},
             {"first_flare_time_s", ""}})
        EXPECT_EQ(row[name], value) << name;
}

TEST_F(RunsTest, AFileWithFaultsIsARowThatSaysSo) {
    const std::string good = passText(5.0);
    const struct {
        const char* name;
        std::string text;
        const char* fault;
        const char* samples;
    } rows[] = {
        {"ETXYZ.OUT.a", good, "", "5"},
        {"ETXYZ.OUT.b", "", "holds no samples", ""},
        {"ETXYZ.OUT.c", good.substr(0, good.size() - 20), "line 25", "5"},
        {"ETXYZ.OUT.d.Z", "\x1f\x9dnonsense", "its compressed data are damaged or cut short", ""},
        {"ETXYZ.OUT.e", good + "5 0 nan 0 0 0 0 0\n1 0 0 0 0 0\n0 0 0 0 0\n", "line 28", "6"},
        {"f.txt", "nonsense\n", "is no trajectory", ""},
    };
    std::vector<std::string> arguments{"-o", folder.file("t.csv")};
    for (const auto& row : rows)
        arguments.push_back(folder.write(std::string("in/") + row.name, row.text));
    const CommandRun run = runs(arguments);
    EXPECT_EQ(run.status, ExitStatus::ProblemsFound);
    std::vector<Row> read = table(folder.file("t.csv"));
    ASSERT_EQ(read.size(), std::size(rows));
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        SCOPED_TRACE(rows[i].name);
        EXPECT_THAT(read[i]["fault"], HasSubstr(rows[i].fault));
        EXPECT_EQ(read[i]["faults"] == "0", rows[i].fault[0] == '\0');
        EXPECT_EQ(read[i]["samples"], rows[i].samples);
        EXPECT_EQ(read[i]["closest_approach_units"].empty(), rows[i].samples[0] == '\0');
        EXPECT_EQ(run.err.find(rows[i].name) != std::string::npos, rows[i].fault[0] != '\0') << run.err;
    }
    const CommandRun missing = runs({folder.file("nothing"), "-o", folder.file("m.csv")});
    EXPECT_EQ(missing.status, ExitStatus::ProblemsFound);
    EXPECT_THAT(missing.err, HasSubstr("nothing: there is no such file"));
}

TEST_F(RunsTest, ADatabaseGoesOnWhereItWas) {
    const std::string kept = addPass("ETXYZ.OUT.a", 5.0);
    const std::string changed = addPass("ETXYZ.OUT.b", 6.0);
    ASSERT_EQ(runsTo(database).status, ExitStatus::Success);
    const auto layout = RunLayout::make(LengthUnit::Unstated, "");
    const auto place = std::ranges::find(layout->columns(), "closest_approach_units") - layout->columns().begin();
    {
        auto opened = RunDatabase::open(database, layout->columns());
        ASSERT_TRUE(opened);
        for (const std::string& path : {kept, changed}) {
            RunRow row = readRun(path, *layout);
            row.values[static_cast<std::size_t>(place)] = 77.0; // what reading it again would undo
            ASSERT_EQ(opened->put({&row, 1}), std::nullopt);
        }
    }
    addPass("ETXYZ.OUT.b", 6.25);
    addPass("ETXYZ.OUT.c", 7.0);
    ASSERT_EQ(runsTo(database).status, ExitStatus::Success);
    const auto read = RunDatabase::openExisting(database);
    ASSERT_TRUE(read);
    RunRows rows = read->rows();
    std::vector<double> misses;
    while (const std::optional<RunRow> row = rows.next())
        misses.push_back(std::get<double>(row->values[static_cast<std::size_t>(place)]));
    EXPECT_THAT(misses, ElementsAre(77.0, 6.25, 7.0));
    EXPECT_THAT(read->calls(), ElementsAre("sorvane runs " + folder.file("in") + " -o " + database)) << "told once";
    const CommandRun other = runsTo(database, {"--unit", "m"});
    EXPECT_EQ(other.status, ExitStatus::Failed);
    EXPECT_THAT(other.err, HasSubstr("was made with other columns"));
}

TEST_F(RunsTest, RefusesWhatItCantDo) {
    addPass("ETXYZ.OUT.a", 5.0);
    folder.write("text.sqlite", "this is no database, but a text that is long enough to have a header of one\n");
    const struct {
        std::vector<std::string> arguments;
        const char* text;
    } rows[] = {
        {{"-o", folder.file("t.xls")}, "ends in none of .sqlite, .csv and .jsonl"},
        {{"-o", folder.file("text.sqlite")}, "file is not a database"},
        {{"-o", folder.file("none/t.csv")}, "No such file or directory"},
        {{"-o", folder.file("none/t.sqlite")}, "unable to open database file"},
        {{"-o", folder.file("t.csv"), "--name", "("}, "missing closing parenthesis"},
        {{"-o", folder.file("t.csv"), "--name", "a(b)"}, "names no field"},
        {{"-o", folder.file("t.csv"), "--name", "(?<Samples>.)"}, "there is a column Samples already"},
        {{"-o", folder.file("t.csv"), "--shard", "0/2"}, "--shard is not"},
        {{"-o", folder.file("t.csv"), "--shard", "3/2"}, "--shard is not"},
        {{"-o", folder.file("t.csv"), "--shard", "1/"}, "--shard is not"},
        {{"-o", folder.file("t.csv"), "--merge"}, "/in: "},
    };
    for (const auto& row : rows) {
        std::vector<std::string> arguments{folder.file("in")};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const CommandRun run = runs(arguments);
        EXPECT_EQ(run.status, ExitStatus::Failed) << row.text;
        EXPECT_THAT(run.err, AllOf(HasSubstr("sorvane runs: "), HasSubstr(row.text)));
    }
    EXPECT_FALSE(std::filesystem::exists(folder.file("t.csv")));
}

TEST_F(RunsTest, PartsJoinToTheSameTableAsOneRun) {
    EXPECT_EQ(shardFiles({"c", "a", "d", "b", "a"}, {1, 3}), (std::vector<std::string>{"a", "d"}));
    for (int i = 0; i < 11; ++i)
        addPass("case" + std::to_string(i) + ".ETXYZ.OUT.x", i);
    const std::vector<std::string> options{"--name", "case(?<case>[0-9]+)"};
    const auto withOptions = [&](std::vector<std::string> more) {
        more.insert(more.end(), options.begin(), options.end());
        return more;
    };
    ASSERT_EQ(runsTo(folder.file("one.csv"), options).status, ExitStatus::Success);
    ASSERT_EQ(runsTo(folder.file("p1.sqlite"), withOptions({"--shard", "1/3"})).status, ExitStatus::Success);
    ASSERT_EQ(runsTo(folder.file("p2.sqlite"), withOptions({"--shard", "2/3"})).status, ExitStatus::Success);
    {
        const EnvironmentVariable id("SLURM_ARRAY_TASK_ID", "7");
        const EnvironmentVariable first("SLURM_ARRAY_TASK_MIN", "5");
        const EnvironmentVariable count("SLURM_ARRAY_TASK_COUNT", "3");
        ASSERT_EQ(runsTo(folder.file("p3.sqlite"), options).status, ExitStatus::Success);
    }
    for (const std::vector<std::string>& order :
         {std::vector<std::string>{"p3", "p1", "p2"}, std::vector<std::string>{"p2", "p2", "p3", "p1"}}) {
        std::vector<std::string> arguments{"--merge", "-o", folder.file("all.csv")};
        for (const std::string& part : order)
            arguments.push_back(folder.file(part + ".sqlite"));
        ASSERT_EQ(runs(arguments).status, ExitStatus::Success);
        EXPECT_EQ(readWholeFile(folder.file("all.csv")), readWholeFile(folder.file("one.csv")));
    }
    ASSERT_EQ(
        runs({"--merge", folder.file("p3.sqlite"), folder.file("p1.sqlite"), "-o", folder.file("all.sqlite")}).status,
        ExitStatus::Success);
    const std::string in = folder.file("in");
    const auto callTo = [&](const std::string& part, const std::string& rest) {
        return "sorvane runs " + in + " -o " + folder.file(part) + " --name 'case(?<case>[0-9]+)'" + rest;
    };
    EXPECT_THAT(
        RunDatabase::openExisting(folder.file("all.sqlite"))->calls(),
        ElementsAre(
            callTo("p3.sqlite", ""), callTo("p1.sqlite", " --shard 1/3"),
            "sorvane runs " + folder.file("p3.sqlite") + ' ' + folder.file("p1.sqlite") + " -o " +
                folder.file("all.sqlite") + " --merge"));
    ASSERT_EQ(runsTo(folder.file("other.sqlite")).status, ExitStatus::Success);
    EXPECT_THAT(
        runs({"--merge", folder.file("p1.sqlite"), folder.file("other.sqlite"), "-o", folder.file("x.csv")}).err,
        HasSubstr("other.sqlite: has other columns than"));
}

// However often it is killed, the database opens and goes on, and comes to what a run without interruption gives.
TEST_F(RunsTest, KilledAtAnyMomentItGoesOn) {
    constexpr int kFiles = 2500;
    for (int i = 0; i < kFiles; ++i)
        addPass("ETXYZ.OUT." + std::to_string(10000 + i), i);
    const auto layout = RunLayout::make(LengthUnit::Unstated, "");
    std::mt19937 random(5);
    std::size_t before = 0;
    int cutShort = 0;
    for (int round = 0; round < 8; ++round) {
        QProcess process;
        process.start(
            SORVANE_COMMAND,
            {"runs", QString::fromStdString(folder.file("in")), "-o", QString::fromStdString(database)});
        ASSERT_TRUE(process.waitForStarted());
        const bool isDone = process.waitForFinished(std::uniform_int_distribution(1, 400)(random));
        process.kill();
        process.waitForFinished();
        cutShort += isDone ? 0 : 1;
        if (!std::filesystem::exists(database))
            continue;
        const auto opened = RunDatabase::open(database, layout->columns());
        ASSERT_TRUE(opened) << opened.problem().text;
        const auto stamps = opened->stamps();
        ASSERT_TRUE(stamps);
        EXPECT_GE(stamps->size(), before);
        before = stamps->size();
    }
    EXPECT_GT(cutShort, 0);
    ASSERT_EQ(runsTo(database).status, ExitStatus::Success);
    ASSERT_EQ(runsTo(folder.file("one.csv")).status, ExitStatus::Success);
    ASSERT_EQ(runs({"--merge", database, "-o", folder.file("all.csv")}).status, ExitStatus::Success);
    EXPECT_TRUE(readWholeFile(folder.file("all.csv")) == readWholeFile(folder.file("one.csv")));
}

TEST(Survey, TakesInOrderHoweverLongEachTakes) {
    std::vector<std::string> taken;
    const auto read = [](std::size_t number) {
        std::this_thread::sleep_for(std::chrono::microseconds(number % 7 == 0 ? 3000 : 10));
        return RunRow{std::to_string(number), {}, {}};
    };
    survey(1000, 4, read, [&](const RunRow& row) {
        taken.push_back(row.path);
        return taken.size() < 900;
    });
    ASSERT_EQ(taken.size(), 900U);
    for (std::size_t i = 0; i < taken.size(); ++i)
        EXPECT_EQ(taken[i], std::to_string(i));
    survey(0, 4, read, [](const RunRow&) { return false; });
}

TEST(RunText, QuotesWhatNeedsIt) {
    const RunRow row{"a,\"b\"\n", {3, 4}, {RunValue(), std::int64_t{-5}, 0.1, "x\xff"}};
    const std::vector<std::string> columns{"n", "i", "d", "t"};
    EXPECT_EQ(runHeading(RunFormat::Csv, columns), "path,file_bytes,file_modified_ns,n,i,d,t\n");
    EXPECT_EQ(runLine(RunFormat::Csv, columns, row), "\"a,\"\"b\"\"\n\",3,4,,-5,0.1,x\xff\n");
    EXPECT_EQ(
        runLine(RunFormat::JsonLines, columns, row),
        "{\"path\":\"a,\\\"b\\\"\\n\",\"file_bytes\":3,\"file_modified_ns\":4,\"n\":null,\"i\":-5,\"d\":0.1,\"t\":\"x"
        "\xef\xbf\xbd\"}\n");
}
} // namespace
