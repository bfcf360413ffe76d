// Measures of radiation in `sorvane export`, `plot` and `runs`.
#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>

#include "commandrun.h"
#include "rows.h"
#include "signaturebodies.h"
#include "trajectorytext.h"

using namespace sorvane;

namespace {
using testing::HasSubstr;
using testing::Not;

// The target radiates 6 W/sr ahead and stands in the dark; the threat comes from there. A flare of brightness 120 burns
// behind it, in the seeker's field, from the second sample on.
class RadiometryCommand : public testing::Test {
protected:
    RadiometryCommand() {
        const SignatureFiles body =
            writeBody(folder, "tgt_b0001", boxFacets({4.0, 3.0, 2.0}, {1e-4F, 2e-4F, 3e-4F, 4e-4F, 5e-4F, 6e-4F}));
        folder.write("tgt_b0001.atm", "0 0 0\n0 0 0 0 0 0 0 0 90 90\n0 0.25 0 0\n");
        for (const char* const name : {"t.top", "t.rad"})
            folder.write(name, "");
        file = folder.file("ETXYZ.OUT.a");
        write(file, folder.path().string());
    }
    void write(const std::string& path, const std::string& bodies) const {
        TestSample first{.time = 0.0, .target = {0, 0, -1000}, .threat = {1000, 0, -1000}, .gyro = {0, 0, 180}};
        TestSample last{.time = 1.0, .target = {0, 0, -1000}, .threat = {500, 0, -1000}, .gyro = {0, 0, 180}};
        last.flares = {TestFlare{.id = 4, .x = -50, .z = -1000, .scalar = 120.0}};
        QByteArray header = trajectoryHeader();
        for (const char* const name : {"tgt_b0001.rad", "tgt.brdf", "tgt.vnl"})
            header.replace(
                QByteArray("/nowhere/") + name,
                QByteArray::fromStdString(bodies) + "/tgt_b0001." + QByteArray(name).split('.').last());
        writeFile(QString::fromStdString(path), header + trajectoryRecord(first) + trajectoryRecord(last));
    }
    // What each line of `all` has beside that of `begins`.
    static std::string columnsBeside(const std::string& all, const std::string& begins) {
        std::string rows;
        std::istringstream lines(all);
        std::istringstream others(begins);
        for (std::string line, begin; std::getline(lines, line) && std::getline(others, begin); rows += '|')
            rows += line.starts_with(begin) ? line.substr(begin.size()) : "?";
        return rows;
    }
    // With numbers to four digits.
    static std::string rounded(const std::string& text) {
        std::string result;
        std::istringstream words(text);
        for (std::string word; std::getline(words, word, ',');) {
            char* end = nullptr;
            const double number = std::strtod(word.c_str(), &end);
            char shown[32];
            std::snprintf(shown, sizeof shown, "%.4g", number);
            result += ',' + (end == word.c_str() ? word : shown + std::string(end));
        }
        return result.substr(1);
    }

    TemporaryDirectory folder;
    std::string file;
};

TEST_F(RadiometryCommand, ExportHasThemByName) {
    const std::string plain = runCommand({"export", file, "--unit", "m"}).out;
    const auto columns = [&](const std::vector<std::string>& options) {
        std::vector<std::string> words{"export", file, "--unit", "m", "--measures"};
        words.insert(words.end(), options.begin(), options.end());
        const CommandRun run = runCommand(words);
        EXPECT_EQ(run.err, "");
        return rounded(columnsBeside(run.out, plain));
    };
    EXPECT_EQ(
        columns({"target-intensity,target-irradiance,target-contrast,jam-to-signal,target-intensity-band-4"}),
        ",target_intensity_W_per_sr,target_irradiance_W_per_cm2,target_contrast_W_per_sr,jam_to_signal,"
        "target_intensity_band_4_W_per_sr|,6,6e-10,4.5,0,|,6,2.4e-09,4.5,20,|");
    EXPECT_EQ(
        columns(
            {"target-contrast,jam-to-signal", "--background", "5e-5", "--flare-scale", "0.1", "--signature-step", "2"}),
        ",target_contrast_W_per_sr,jam_to_signal|,3,0|,3,2|");
    for (const char* const extension : {"brdf", "rad", "atm"})
        folder.write(
            std::string("tgt_b0004.") + extension, readWholeFile(folder.file(std::string("tgt_b0001.") + extension)));
    EXPECT_EQ(columns({"target-intensity-band-4"}), ",target_intensity_band_4_W_per_sr|,6|,6|");
    const std::string rotors = folder.write("rotors", "1 12  0 0 0  0 0 1  0.25\n"); // the right side faces ahead
    EXPECT_EQ(columns({"target-intensity", "--rotors", rotors}), ",target_intensity_W_per_sr|,6|,16|");
    EXPECT_THAT(
        rounded(runCommand({"export", file, "--unit", "m", "--flares", "--measures", "flare-jam-to-signal"}).out),
        HasSubstr(",flare_jam_to_signal\n1,4,-50,0,-1000,20"));
    // Those that take long come by name alone.
    EXPECT_THAT(runCommand({"export", file, "--measures", "all"}).out, Not(HasSubstr("jam_to_signal")));
    EXPECT_EQ(runCommand({"export", file, "--measures", "all"}).err, "");
    const CommandRun unitless = runCommand({"export", file, "--measures", "target-irradiance,target-intensity"});
    EXPECT_EQ(unitless.status, ExitStatus::ProblemsFound);
    EXPECT_EQ(unitless.err, file + ": target-intensity stays empty without --unit\n");
    EXPECT_THAT(runCommand({"export", file, "--flares"}).out, Not(HasSubstr("jam_to_signal")));
    EXPECT_THAT(runCommand({"info", file, "--json"}).out, Not(HasSubstr("jam_to_signal")));
    EXPECT_THAT(runCommand({"measures", "--json"}).out, HasSubstr("\"column\": \"target_irradiance_W_per_cm2\""));
}

TEST_F(RadiometryCommand, PlotDrawsThem) {
    const std::string table = folder.file("a.csv");
    const CommandRun run = runCommand(
        {"plot", file, file, "--unit", "m", "-o", table, "--measure", "target-intensity,flare-jam-to-signal"});
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(run.status, ExitStatus::Success);
    const std::string rows = rounded(readWholeFile(table));
    EXPECT_THAT(rows, HasSubstr(",\"ETXYZ.OUT.a: target-intensity\",0,6\n"));
    EXPECT_THAT(rows, HasSubstr("\"flare-jam-to-signal\",\"\",\"ETXYZ.OUT.a: flare 4\",1,20"));
}

TEST_F(RadiometryCommand, RunsHaveThemWhereAskedFor) {
    write(folder.file("ETXYZ.OUT.b"), "/nowhere");
    const std::string files = folder.path().string();
    const std::string table = folder.file("a.csv");
    const auto lastColumns = [&] { // of radiation
        std::string rows;
        std::istringstream lines(readWholeFile(table));
        for (std::string line; std::getline(lines, line); rows += '|') {
            std::size_t begin = line.size();
            for (int column = 0; column < 5; ++column)
                begin = line.rfind(',', begin - 1);
            rows += line.substr(begin);
        }
        return rows;
    };
    const CommandRun run =
        runCommand({"runs", files, "-o", table, "--unit", "m", "--radiometry", "--flare-scale", "0.1"});
    EXPECT_EQ(
        run.err,
        "sorvane runs: the files of the target of 1 engagement can't be used: what is measured of its radiation "
        "is empty\n");
    EXPECT_EQ(run.status, ExitStatus::ProblemsFound);
    EXPECT_EQ(
        rounded(lastColumns()),
        ",target_mean_intensity_W_per_sr,target_intensity_at_first_flare_W_per_sr,greatest_jam_to_signal,"
        "greatest_jam_to_signal_time_s,target_outshone_time_s|,6,6,2,1,1|,,,,,|");
    const std::string database = folder.file("a.sqlite");
    runCommand({"runs", file, "-o", database, "--unit", "m", "--radiometry", "--signature-step", "0.5"});
    EXPECT_THAT(
        runCommand({"report", database, "-o", "-", "--allow-missing"}).out,
        HasSubstr("--unit m --radiometry --signature-step 0.5"));
    runCommand({"runs", files, "-o", table, "--unit", "m"});
    EXPECT_THAT(readWholeFile(table), Not(HasSubstr("intensity")));
    EXPECT_THAT(runCommand({"runs", files, "-o", table, "--radiometry"}).err, HasSubstr("--radiometry needs --unit"));
}

TEST_F(RadiometryCommand, SaysWhatItLacks) {
    const std::string none = folder.file("ETXYZ.OUT.none");
    write(none, "/nowhere");
    const std::string bad = folder.file("ETXYZ.OUT.bad");
    const std::string broken = folder.file("broken");
    for (const char* const extension : {"vnl", "brdf", "rad", "atm"})
        folder.write(std::string("broken/tgt_b0001.") + extension, "none");
    write(bad, broken);
    for (const auto& [path, text] : Rows<std::string, std::string>{
             {none, "a file of it that the trajectory names does not exist\n"}, {bad, "Missing BRDF file signature"}})
        for (const std::vector<std::string>& words : std::vector<std::vector<std::string>>{
                 {"export", path, "--measures", "target-irradiance"},
                 {"plot", path, "-o", folder.file("a.svg"), "--measure", "target-irradiance"}}) {
            const CommandRun run = runCommand(words);
            EXPECT_EQ(run.status, ExitStatus::ProblemsFound);
            EXPECT_THAT(
                run.err,
                testing::StartsWith(path + ": what is measured of the target's radiation stays empty: " + text));
        }
    EXPECT_THAT(
        runCommand({"export", none, "--measures", "target-irradiance"}).out, HasSubstr("irradiance_W_per_cm2\n0,"));
    for (const std::vector<std::string>& option : std::vector<std::vector<std::string>>{
             {"--signature-step", "0"}, {"--flare-scale", "0"}, {"--background", "-1"}, {"--rotors", "/nowhere"}})
        EXPECT_EQ(runCommand({"export", file, "--measures", "range", option[0], option[1]}).status, ExitStatus::Failed)
            << option[0];
}
} // namespace
