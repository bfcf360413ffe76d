// `sorvane check` of trajectories.
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "commandrun.h"
#include "environmentvariable.h"
#include "temporarydirectory.h"

using namespace sorvane;

namespace {
using testing::EndsWith;
using testing::HasSubstr;

const std::string kHeader = "t.top\nt.rad\ns.rad\n1 2 3\n4 5 6\ng.vnl\nb.brdf\n\nred\n7\nid\n2.5\n";

std::string head(const std::string& time, int flares = 0) {
    return time + " " + std::to_string(flares) + " 1 2 3 4 5 6\n";
}

std::string record(const std::string& time) {
    return head(time) + "1 2 3 4 5 6\n0 0 1 2 3\n";
}

constexpr const char* kFlare = "1 1 1 2 3 4e8 5 6 7 8 9 10 3\n";

// What is found in the trajectory itself: one line each, without the file's name.
class CheckTrajectory : public testing::Test {
protected:
    // The data root is empty: the warnings of missing files are left out, unless there is a word to look for.
    std::string findings(const std::string& text, const std::vector<std::string>& options = {}) {
        const std::string path = directory_.write("ETXYZ.OUT.1", text);
        std::vector<std::string> arguments = {"check", path};
        arguments.insert(arguments.end(), options.begin(), options.end());
        lastRun_ = runCommand(arguments);
        std::string kept;
        std::istringstream lines(lastRun_.out);
        for (std::string line; std::getline(lines, line);)
            if (line.find("does not exist") == std::string::npos && line.starts_with(path + ":"))
                kept += line.substr(path.size() + 1) + "\n";
        return kept;
    }

    TemporaryDirectory directory_;
    EnvironmentVariable dataRoot_{"PELSAR_DATA", directory_.file("none/")};
    CommandRun lastRun_;
};

TEST_F(CheckTrajectory, TellsEveryFaultAndItsPlace) {
    const std::string good = record("0") + record("1");
    const std::string reversed = record("0") + record("2") + record("1");
    const std::string ofDigits =
        " units in the viewer, which keeps about seven digits of them: sorvane convert --origin "
        "brings them near the origin\n";
    const struct {
        std::string text;
        std::string findings;
    } cases[] = {
        {kHeader + good, ""},
        {kHeader + good + "\n# only a comment\n\n", ""},
        {kHeader + record("0") + "1 0 500000.06 2 3 4 5 6\n4321012.345 2 3 4 5 6\n0 0 1 2 3\n", // 0.095 from 4321012.25
         "16:1: warning: from here on positions lose up to 0.155" + ofDigits},
        {kHeader + record("0") + "1 0 500000.015 2 3 4 5 6\n1 2 3 4 5 6\n0 0 1 2 3\n", // floats are 0.03125 apart
         "16:1: warning: from here on positions lose up to 0.015" + ofDigits},
        {kHeader + record("0") + "1 0 65536.0039 2 3 4 5 6\n1 2 3 4 5 6\n0 0 1 2 3\n", ""}, // 0.0039 is not noticed
        {"", "1:1: error: the header ends after 0 of its 12 lines\n"},
        {"# a\nt\nt\n", "3:1: error: the header ends after 2 of its 12 lines\n"},
        {"t\nt\ns\n1 x\n4 5e99 6\ng\nb\n\nred\n1.5\nid\nabc\n" + good,
         "4:3: error: \"x\" is not a finite number and reads as 0\n"
         "4:4: error: 1 word is missing and reads as 0\n"
         "5:3: error: \"5e99\" is not a finite number and reads as 0\n"
         "10:1: error: \"1.5\" is not an integer of 32 bits and reads as 0\n"
         "12:1: error: \"abc\" is not a finite number and reads as 1.5\n"},
        {kHeader + "# c\n 0  0 1 nan 3 4 5 1,5\n1 2 3 4\n0 0 inf 2 3\n",
         "14:9: error: \"nan\" is not a finite number and reads as 0\n"
         "14:19: error: \"1,5\" is not a finite number and reads as 0\n"
         "15:8: error: 2 words are missing and read as 0\n"
         "16:5: error: \"inf\" is not a finite number and reads as 0\n"},
        {kHeader + "0 0 1 2 3 4 5 \xC3\xA9\xC3\xA9 6\n1 2 3 4 5\xC2\xA0q\n0 0 1 2 3\n",
         "13:15: error: \"\xC3\xA9\xC3\xA9\" is not a finite number and reads as 0\n"
         "14:11: error: \"q\" is not a finite number and reads as 0\n"},
        {kHeader + head("0") + "\n0 0 1 2 3\r\n" + record("1"), "14:1: error: 6 words are missing and read as 0\n"},
        {kHeader + "0 0 1 2" + std::string(1, '\0') + " 3 4 5 6\r\n1 2 3 4 5 6\r\n0 0 1 2 3\r\n\r\n",
         "13:8: error: 4 words are missing and read as 0\n"},
        {kHeader + record("1e-400") + record("1") + record("1") + record("0x2"),
         "13:1: error: \"1e-400\" is not a finite number and reads as 0\n"
         "19:1: error: the time 1 repeats that of line 16, whose record is lost\n"
         "22:1: error: \"0x2\" is not a finite number and reads as 0\n"
         "22:1: warning: the time 0 goes back behind the 1 of line 19\n"
         "22:1: error: the time 0 repeats that of line 13, whose record is lost\n"},
        {kHeader + good + head("2", 3) + "1 2 3 4 5 6\n0 0 1 2 3\n" + kFlare,
         "19:1: error: the data end within the record that begins here: what is missing of it reads as 0, and there "
         "are 1 of its 3 flares\n"},
        {kHeader + record("0") + head("1"),
         "16:1: error: the data end within the record that begins here: what is missing of it reads as 0\n"},
        {kHeader + record("0") + head("1", -2) + "1 2 3 4 5 6\n0 0 1 2 3\n",
         "16:1: error: the flare count is -2 and counts as 0\n"},
        {kHeader + head("0", 2) + "1 2 3 4 5 6\n0 0 1 2 3\n" + kFlare + record("1") + record("2") + record("3"),
         "17:1: error: this looks like the first line of a record but is read as flare 2 of 2: the flare count in line "
         "13 may be too high\n"},
        {kHeader + head("0", 1) + "1 2 3 4 5 6\n0 0 1 2 3\n" + kFlare + kFlare + record("1") + record("2"),
         "17:1: error: this looks like a flare but is read as the first line of a record: the flare count of the "
         "record before may be too low\n"},
        {kHeader + record("0") + " \t\n# c\n" + record("1"),
         "16:1: error: a blank line ends the data here: 3 lines that follow are not read\n"},
        {kHeader + head("0", 1) + "1 2 3 4 5 6\n0 0 1 2 3\n3 1 1 2 3 50000 0 0 0 5 0 0 1\n",
         "1:1: warning: all flares are black balls in the view: the brightest, flare 3, has a grey of 0.01, and would "
         "be white, 1, from a brightness of 5e+06 on\n"},
        {kHeader + "\n" + "x\n", "1:1: error: there are no samples: the viewer refuses the file\n"
                                 "13:1: error: a blank line ends the data here: 1 line that follows is not read\n"},
        {kHeader + reversed + record("2.0"), "19:1: warning: the time 1 goes back behind the 2 of line 16\n"
                                             "22:1: error: the time 2 repeats that of line 16, whose record is lost\n"},
        {kHeader + record("-1.5") + record("29.999") + record("30.25") + record("31"),
         "1:1: warning: there is no sample at time 0, by which the terrain is placed: an empty one takes its place\n"
         "13:1: warning: the samples begin at -1.5 s, and playback begins at 0 s\n"
         "19:1: warning: from here on the samples, which end at 31 s, are beyond what playback reaches, 29.999 s\n"},
        {kHeader + "0 0 1 2 3 4 5 179.5\n1 2 3 0 0 0\n0 0 1 -90 3\n1 0 1 2 3 4 5 -179\n1 2 3 180 0 0\n0 0 1 90.5 3\n",
         "16:1: warning: target angle 3 jumps from the 179.5 of line 13 to -179: angles are blended as plain numbers, "
         "and this one turns the long way round\n"
         "16:1: warning: gyro angle 2 jumps from the -90 of line 13 to 90.5: angles are blended as plain numbers, and "
         "this one turns the long way round\n"},
        {kHeader + "0 0 1 2 3 4 5 179.5\n1 2 3 0 0 0\n0 0 1 0 3\n1 0 1 2 3 4 5 -179\n1 2 3 0 0 0\n0 0 1 0 3\n",
         "16:1: warning: target angle 3 jumps from the 179.5 of line 13 to -179: angles are blended as plain numbers, "
         "and this one turns the long way round\n"},
        {kHeader + good + "2 0 1 2 3 4 5 6 " + std::string(std::size_t{1} << 20, ' ') + "\n1 2 3 4 5 6\n0 0 1 2 3\n",
         "19:1: error: the line is too long: only its first 1048576 bytes are read\n"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(findings(text), expected) << text.substr(0, 300);
}

TEST_F(CheckTrajectory, FindsItsWayBackIntoStep) {
    std::string text = kHeader + head("0", 0) + "1 2 3 4 5 6\n0 0 1 2 3\n" + kFlare + record("1") + record("2") + "x";
    text += record("3");
    EXPECT_THAT(findings(text), testing::AllOf(HasSubstr("16:1: error: this looks like a flare"), HasSubstr("\"x3\"")));
}

TEST_F(CheckTrajectory, TellsOfManyAlikeHowManyMore) {
    std::string text = kHeader;
    for (int i = 0; i < 30; ++i)
        text += std::to_string(i) + " 0 x 2 3 4 5 6\n1 2 3 4 5 6\n0 0 1 2 3\n";
    EXPECT_EQ(std::ranges::count(findings(text), '\n'), 21);
    EXPECT_THAT(findings(text), HasSubstr("73:6: error: and 10 more malformed numbers (--all prints them)\n"));
    EXPECT_EQ(std::ranges::count(findings(text, {"--all"}), '\n'), 30);
}

TEST_F(CheckTrajectory, TellsOfMissingFilesAndWhatTakesTheirPlace) {
    directory_.write("t.top", "x");
    findings(std::string("# c\n") + directory_.file("t.top") + kHeader.substr(5) + record("0"));
    EXPECT_THAT(
        lastRun_.out, HasSubstr("3:1: warning: the terrain's radiance file \"t.rad\" does not exist: the stock "
                                "terrain takes its place\n"));
    EXPECT_THAT(
        lastRun_.out,
        HasSubstr(std::string("2:1: error: the stock terrain's file \"") + directory_.file("none/ter0010/")));
    EXPECT_THAT(
        lastRun_.out, HasSubstr("4:1: warning: the atmosphere file \"s.atm\" does not exist: the stock target "
                                "takes its place\n"));
    EXPECT_THAT(
        lastRun_.out, HasSubstr(std::string("12:1: error: the threat's file \"") + directory_.file("none/tgt0450/")));
    EXPECT_EQ(lastRun_.status, ExitStatus::ProblemsFound);
}

TEST_F(CheckTrajectory, TellsOfUnreadableCompressedFiles) {
    directory_.write("good", kHeader + record("0") + record("1"));
    const std::string good = directory_.file("good");
    ASSERT_EQ(std::system(("compress -cf '" + good + "' > '" + good + ".Z'").c_str()), 0);
    EXPECT_THAT(runCommand({"check", good + ".Z"}).out, testing::Not(HasSubstr("uncompress")));
    const std::string damaged = directory_.write("damaged.Z", readWholeFile(good + ".Z").substr(0, 2) + "\x90nonsense");
    EXPECT_THAT(
        runCommand({"check", damaged}).out,
        HasSubstr(damaged + ":1:1: error: its compressed data are damaged or cut short\n"));
    const std::string text = directory_.write("text.Z", kHeader);
    EXPECT_THAT(runCommand({"check", text}).out, HasSubstr("text.Z:1:1: error: its compressed data are damaged"));
}

TEST_F(CheckTrajectory, ReadsStandardInput) {
    const std::string path = directory_.write("input", kHeader + record("0") + record("x"));
    const int kept = ::dup(STDIN_FILENO);
    const int input = ::open(path.c_str(), O_RDONLY);
    ::dup2(input, STDIN_FILENO);
    const CommandRun run = runCommand({"check", "-"});
    ::dup2(kept, STDIN_FILENO);
    ::close(kept);
    ::close(input);
    EXPECT_THAT(run.out, HasSubstr("<stdin>:16:1: error: \"x\" is not a finite number and reads as 0\n"));
}

TEST_F(CheckTrajectory, GivesARecordOfTheFindings) {
    findings(kHeader + record("0") + record("\xFF"), {"--json"});
    const nlohmann::json report = nlohmann::json::parse(lastRun_.out);
    EXPECT_GT(report.at("errors"), 0);
    EXPECT_EQ(report.at("findings").size(), report.at("errors").get<int>() + report.at("warnings").get<int>());
    const auto found = std::ranges::find_if(report.at("findings"), [](const auto& f) { return f.at("line") == 16; });
    ASSERT_NE(found, report.at("findings").end());
    EXPECT_EQ(found->at("column"), 1);
    EXPECT_EQ(found->at("severity"), "error");
    EXPECT_THAT(found->at("file").template get<std::string>(), EndsWith("/ETXYZ.OUT.1"));
}
} // namespace
