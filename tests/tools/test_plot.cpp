// `sorvane plot`.
#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>

#include <QImage>

#include "commandrun.h"
#include "rows.h"
#include "temporarydirectory.h"
#include "trajectorytext.h"

using namespace sorvane;

namespace {
using testing::HasSubstr;

class PlotCommand : public testing::Test {
protected:
    PlotCommand() {
        QByteArray text = trajectoryHeader("white", "4");
        for (int i = 0; i <= 20; ++i) {
            TestSample sample{.time = i / 10.0, .target = {0.0, 30.0, -1000.0}, .threat = {100.0 * i, 0.0, -1000.0}};
            if (i >= 5)
                sample.flares.append(TestFlare{.id = 7, .x = 200.0, .y = 10.0, .z = -990.0});
            text += trajectoryRecord(sample);
        }
        file = folder.write("ETXYZ.OUT.a", text.toStdString());
    }

    static std::vector<std::string> splitRows(const std::string& table) {
        std::istringstream text(table);
        std::vector<std::string> rows;
        for (std::string row; std::getline(text, row);)
            rows.push_back(row);
        return rows;
    }
    std::string output(const char* name) const { return folder.file(name); }
    CommandRun plot(std::vector<std::string> more) const {
        more.insert(more.begin(), {"plot", file});
        return runCommand(more);
    }

    TemporaryDirectory folder;
    std::string file;
};

TEST_F(PlotCommand, WritesEachFormat) {
    for (const char* const name : {"a.png", "a.svg", "a.pdf", "a.csv"}) {
        const CommandRun run = plot({"-o", output(name)});
        EXPECT_EQ(run.status, ExitStatus::Success) << run.err;
        EXPECT_GT(std::filesystem::file_size(output(name)), 1000U) << name;
    }
    EXPECT_EQ(QImage(QString::fromStdString(output("a.png"))).size(), QSize(1200, 800));
    EXPECT_THAT(readWholeFile(output("a.svg")), HasSubstr(">range (units)<"));
    EXPECT_EQ(plot({"-o", output("b.png"), "--size", "640x480", "--theme", "dark"}).status, ExitStatus::Success);
    const QImage dark(QString::fromStdString(output("b.png")));
    EXPECT_EQ(dark.size(), QSize(640, 480));
    EXPECT_LT(dark.pixelColor(3, 3).lightness(), 60);
}

// The numbers are those of `sorvane export`, digit by digit.
TEST_F(PlotCommand, PlotsTheNumbersThatExportWrites) {
    plot({"-o", output("a.csv"), "--measure", "line-of-sight-rate", "--from", "0.25", "--to", "1.45", "--unit", "m"});
    const std::vector<std::string> plotted = splitRows(readWholeFile(output("a.csv")));
    const std::vector<std::string> exported =
        splitRows(runCommand({"export", file, "--measures", "line-of-sight-rate", "--unit", "m"}).out);
    ASSERT_EQ(plotted.size(), 1U + 12U);
    for (std::size_t i = 1; i < plotted.size(); ++i) {
        const std::string& row = exported[i + 3];
        EXPECT_EQ(
            plotted[i], "\"line-of-sight-rate\",\"°/s\",\"line-of-sight-rate\"," + row.substr(0, row.find(',')) +
                            row.substr(row.rfind(',')));
    }
}

TEST_F(PlotCommand, SeveralFilesAndWhatTheyAreAlignedBy) {
    std::filesystem::copy(file, folder.file("ETXYZ.OUT.b"));
    const CommandRun run = runCommand(
        {"plot", file, folder.file("ETXYZ.OUT.b"), "-o", output("a.csv"), "--measure", "flare-age", "--align",
         "first-flare"});
    EXPECT_EQ(run.status, ExitStatus::Success) << run.err;
    const std::string table = readWholeFile(output("a.csv"));
    EXPECT_THAT(table, HasSubstr("\"flare-age\",\"s\",\"ETXYZ.OUT.a: flare 7\",0,0\n"));
    EXPECT_THAT(table, HasSubstr("\"flare-age\",\"s\",\"ETXYZ.OUT.b: flare 7\",0,0\n"));
}

TEST_F(PlotCommand, SaysWhatStaysEmptyWithoutTheUnit) {
    for (const auto& [unit, status, message] : Rows<std::vector<std::string>, ExitStatus, const char*>{
             {{}, ExitStatus::ProblemsFound, "target-load-factor stays empty without --unit\n"},
             {{"--unit", "ft"}, ExitStatus::Success, ""}}) {
        std::vector<std::string> words = {"plot", file, "-o", output("a.csv"), "--measure", "range,target-load-factor"};
        words.insert(words.end(), unit.begin(), unit.end());
        const CommandRun run = runCommand(words);
        EXPECT_EQ(run.status, status);
        EXPECT_EQ(run.err, message);
    }
}

TEST_F(PlotCommand, RefusesWhatItCantDraw) {
    const struct {
        std::vector<std::string> arguments;
        const char* complaint;
    } rows[] = {
        {{"-o", output("a.jpg")}, "its name ends in none of .png, .svg, .pdf and .csv"},
        {{"-o", output("a.png"), "--measure", "rang"}, "there is no measure rang: see sorvane measures"},
        {{"-o", output("a.png"), "--measure", "decoyed"}, "decoyed is no curve: see sorvane info"},
        {{"-o", output("a.png"), "--size", "0x1"}, "--size is not WIDTHxHEIGHT: 0x1"},
        {{"-o", output("a.png"), "--from", "2", "--to", "1"}, "--from is not before --to"},
        {{"-o", output("a.png"), "--from", "nan"}, "--from is not before --to"},
        {{"-o", "/nowhere/a.png"}, "/nowhere/a.png"},
        {{folder.file("missing"), "-o", output("a.png")}, "missing: there is no such file"},
    };
    for (const auto& row : rows) {
        const CommandRun run = plot(row.arguments);
        EXPECT_EQ(run.status, ExitStatus::Failed) << row.complaint;
        EXPECT_THAT(run.err, testing::AllOf(testing::StartsWith("sorvane plot: "), HasSubstr(row.complaint)));
    }
    EXPECT_FALSE(std::filesystem::exists(output("a.png")));
}
} // namespace
