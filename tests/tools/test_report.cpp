// `sorvane report`; tests/tools/check_report.py uses the page.
#include <filesystem>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "commandrun.h"
#include "distributioncharts.h"
#include "polarchart.h"
#include "runset.h"
#include "temporarydirectory.h"
#include "trajectorytext.h"
#include "worstruns.h"

using namespace sorvane;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace {
class ReportTest : public testing::Test {
protected:
    // A trajectory that passes the target at 2 s.
    std::string addPass(const std::string& name, double miss) {
        QByteArray text = trajectoryHeader("white", "4");
        for (int i = 0; i <= 4; ++i)
            text += trajectoryRecord(
                {.time = double(i), .target = {0.0, miss, -1000.0}, .threat = {100.0 * (i - 2), 0.0, -1000.0}});
        return folder.write(name, text.toStdString());
    }
    CommandRun report(std::vector<std::string> more) {
        more.insert(more.begin(), {"report", set, "-o", page});
        return runCommand(more);
    }
    std::string html() const { return readWholeFile(page); }

    TemporaryDirectory folder;
    std::string set = folder.file("night.sqlite");
    std::string page = folder.file("night.html");
};

std::size_t countOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

TEST_F(ReportTest, IsOnePageOfTheSameBytesWithWhatTheRowsSay) {
    const std::string near = addPass("ETXYZ.OUT.near", 3.0);
    const std::string far = addPass("ETXYZ.OUT.far", 40.0);
    writeRunSet(
        set,
        {{near, 3.0, std::int64_t{1}, "</script><b>&", 0, 90.0},
         {far, 40.0, std::int64_t{0}, "p", 0, 45.0},
         {"gone", {}, {}, "p", 1}},
        {"sorvane runs a -o night.sqlite", "sorvane runs <b> -o night.sqlite"});
    const std::vector<std::string> options{"--title", "A & B", "--by",    "pattern",
                                           "--miss",  "5",     "--where", "samples > 1"};
    const CommandRun run = report(options);
    const std::string first = html();
    EXPECT_EQ(run.status, ExitStatus::ProblemsFound) << "the stock bodies take the places of what there isn't";
    EXPECT_THAT(run.err, HasSubstr("takes its place"));
    std::vector<std::string> allowing = options;
    allowing.emplace_back("--allow-missing");
    EXPECT_EQ(report(allowing).status, ExitStatus::Success);
    EXPECT_TRUE(html() == first) << "the same bytes";
    EXPECT_THAT(first, Not(HasSubstr("://")));
    EXPECT_EQ(countOf(first, "</script>"), 2U) << "no text of a row ends a script";
    EXPECT_THAT(first, HasSubstr("<h1>A &amp; B</h1>"));
    EXPECT_THAT(first, HasSubstr("3 runs of "));
    EXPECT_THAT(first, HasSubstr("1 run left out: 1 with faults"));
    EXPECT_EQ(countOf(first, "src=\"data:image/png;base64,"), 2U);
    EXPECT_EQ(countOf(first, "data:image/svg+xml;base64,"), 4U) << "for light and dark pages";
    EXPECT_THAT(first, HasSubstr("&lt;/script&gt;&lt;b&gt;&amp;</td>")) << "the group's name";
    EXPECT_THAT(
        first, HasSubstr("sorvane runs a -o night.sqlite\nsorvane runs &lt;b&gt; -o night.sqlite\nsorvane report "));
    EXPECT_THAT(first, HasSubstr("--title 'A &amp; B' --where 'samples &gt; 1' --by pattern --miss 5 --worst least"));
    const std::string begin = "id=\"data\">";
    const std::size_t place = first.find(begin) + begin.size();
    const auto data = nlohmann::json::parse(first.substr(place, first.find("</script>", place) - place));
    std::map<std::string, nlohmann::json> columns;
    for (const auto& column : data["columns"])
        columns[column["name"]] = column["values"];
    EXPECT_FALSE(columns.contains("file_bytes"));
    EXPECT_EQ(columns["closest_approach_m"], nlohmann::json({40.0, 3.0, nullptr})) << "by path, what doesn't count too";
    EXPECT_EQ(columns["pattern"][1], "</script><b>&");
    EXPECT_EQ(columns["fault"], nlohmann::json({nullptr, nullptr, "holds no samples"}));
}

TEST_F(ReportTest, TellsOfFilesThatAreGoneOrChanged) {
    const std::string changed = addPass("ETXYZ.OUT.a", 3.0);
    const std::string broken = folder.write("ETXYZ.OUT.b", "nonsense\n");
    writeRunSet(set, {{changed, 3.0, {}, {}}, {broken, 4.0, {}, {}}, {"gone<", 5.0, {}, {}}});
    addPass("ETXYZ.OUT.a", 3.25);
    const CommandRun run = report({"--allow-missing"});
    EXPECT_EQ(run.status, ExitStatus::ProblemsFound);
    for (const std::string& message :
         {changed + ": has changed since its row was made", broken + ": no picture",
          std::string("gone<: there is no such file")})
        EXPECT_THAT(run.err, HasSubstr("sorvane report: " + message));
    EXPECT_THAT(html(), AllOf(HasSubstr(">there is no such file</p>"), HasSubstr("gone&lt;"), Not(HasSubstr("<img"))));
    EXPECT_EQ(report({"--count", "0"}).status, ExitStatus::Success);
    EXPECT_THAT(html(), Not(HasSubstr("class=\"run\"")));
}

TEST_F(ReportTest, RefusesWhatItCantShow) {
    writeRunSet(set, {{"a", {}, {}, {}}});
    const std::vector<std::pair<std::vector<std::string>, const char*>> rows{
        {{}, "no run to count; 1 run left out: 1 without closest_approach_m"},
        {{"--aspect", "azimuth", "--column", "samples"}, "there is no column azimuth"},
        {{"--column", "samples", "-o", folder.file("none/x.html")}, "No such file or directory"},
        {{"--worst", "nearest"}, "--worst"},
        {{"--where", "1); DROP TABLE runs --"}, "is more than a condition"},
    };
    for (const auto& [options, message] : rows) {
        std::vector<std::string> arguments{"report", set, "--count", "0"};
        if (std::ranges::find(options, "-o") == options.end())
            arguments.insert(arguments.end(), {"-o", page});
        arguments.insert(arguments.end(), options.begin(), options.end());
        const CommandRun run = runCommand(arguments);
        EXPECT_EQ(run.status, ExitStatus::Failed) << message;
        EXPECT_THAT(run.err, HasSubstr(message));
    }
    EXPECT_FALSE(std::filesystem::exists(page));
}

// A set of runs that count, without its database.
ReportSet setOf(const std::vector<std::pair<double, double>>& valuesAndAspects) {
    ReportSet set;
    set.summary.column = "closest_approach_m";
    set.aspectColumn = "aspect_deg";
    for (const auto& [value, aspect] : valuesAndAspects) {
        set.runs.push_back(
            {"run" + std::to_string(set.runs.size()), {}, value, value > 5.0 ? 0.0 : 1.0, aspect, 2.0, {}});
        set.summary.all.values.push_back(value);
    }
    std::ranges::sort(set.summary.all.values);
    return set;
}

TEST(Report, TheWorstComeFirst) {
    const ReportSet set = setOf({{5.0, 0.0}, {1.0, 0.0}, {9.0, 0.0}, {1.0, 0.0}});
    const auto paths = [&set](std::size_t count, bool isGreatest) {
        std::vector<std::string> names;
        for (const WorstRun& run :
             worstRunsOf(set, {.count = count, .isGreatest = isGreatest}, [](const std::string&) {}).runs)
            names.push_back(run.run.path);
        return names;
    };
    EXPECT_THAT(paths(3, false), ElementsAre("run1", "run3", "run0"));
    EXPECT_THAT(paths(10, true), ElementsAre("run2", "run0", "run1", "run3"));
}

TEST(Report, RangesAreRoundAndLeaveOutWhatLiesFar) {
    std::vector<double> values;
    for (int i = 0; i < 1000; ++i)
        values.push_back(0.5 + i * 0.019);
    ShownRange range = shownRangeOf(values);
    EXPECT_EQ(range.from, 0.0);
    EXPECT_EQ(range.to, 20.0);
    EXPECT_EQ(range.step, 1.0) << "2 · 9.5 / ∛1000 is 1.9";
    values.insert(values.end(), 5, 900.0);
    range = shownRangeOf(values);
    EXPECT_EQ(range.to, 20.0);
    EXPECT_EQ(range.beyond, 5);
    for (const std::vector<double>& few : {std::vector{3.0}, std::vector{0.0, 0.0}, std::vector{-7.0, -7.0, 1.0}}) {
        range = shownRangeOf(few);
        EXPECT_LE(range.from, few.front());
        EXPECT_GE(range.to, few.back());
        EXPECT_LT(range.from, range.to);
    }
}

TEST(Report, BarsCountEachRunOnce) {
    const ReportSet set = setOf({{0.0, 0.0}, {1.0, 0.0}, {5.0, 0.0}, {9.5, 0.0}, {10.0, 0.0}});
    const std::string bars = histogramOf(set, {0.0, 10.0, 5.0, 0});
    EXPECT_EQ(countOf(bars, "<rect"), 3U);
    EXPECT_THAT(
        bars, HasSubstr("data-filter=\"closest_approach_m&gt;=0 closest_approach_m&lt;5\"><title>2: 0 to 5 m<"));
    EXPECT_THAT(bars, HasSubstr("class=\"bar second\""));
    EXPECT_THAT(bars, HasSubstr("closest_approach_m&lt;=10\"><title>2: 5 to 10 m<")) << "10 belongs to the last bar";
    EXPECT_THAT(bars, HasSubstr("closest_approach_m&lt;=10\"><title>1: 5 to 10 m<")) << "5 is decoyed";
}

TEST(Report, SectorsGoAroundAsFarAsDirectionsDo) {
    const std::vector<AspectSector> half =
        aspectSectorsOf(setOf({{1.0, 0.0}, {2.0, 15.0}, {3.0, 180.0}, {4.0, std::nan("")}}));
    ASSERT_EQ(half.size(), 12U);
    EXPECT_THAT(half[0].values, ElementsAre(1.0));
    EXPECT_THAT(half[1].values, ElementsAre(2.0));
    EXPECT_THAT(half[11].values, ElementsAre(3.0));
    EXPECT_EQ(half[11].decoyed, (Share{1, 1}));
    const std::vector<AspectSector> whole = aspectSectorsOf(setOf({{1.0, -10.0}, {2.0, 360.0}, {3.0, 200.0}}));
    ASSERT_EQ(whole.size(), 24U);
    EXPECT_THAT(whole[23].values, ElementsAre(1.0));
    EXPECT_THAT(whole[0].values, ElementsAre(2.0));
    EXPECT_THAT(whole[13].values, ElementsAre(3.0));
    EXPECT_TRUE(aspectSectorsOf(setOf({{1.0, std::nan("")}})).empty());
}

// 90° from the nose lies to the right, in the middle between nose and tail.
TEST(Report, TheNoseIsUp) {
    const ReportSet set = setOf({{10.0, 90.0}, {5.0, 0.0}});
    const std::string chart = polarChart(set, {0.0, 10.0, 1.0, 0}, aspectSectorsOf(set));
    EXPECT_THAT(chart, HasSubstr("<circle class=\"first\" cx=\"298\" cy=\"266\""));
    EXPECT_THAT(chart, HasSubstr("<circle class=\"second\" cx=\"66\" cy=\"150\""));
}
} // namespace
