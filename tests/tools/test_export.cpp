// `sorvane export`.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <sstream>

#include <sys/stat.h>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <QXmlStreamReader>

#include "commandrun.h"
#include "environmentvariable.h"
#include "fulldisk.h"
#include "geodetic.h"
#include "rows.h"
#include "temporarydirectory.h"
#include "trajectorytext.h"
#include "worldtime.h"

using namespace sorvane;

namespace {
using testing::HasSubstr;
using testing::StartsWith;

class ExportTest : public testing::Test {
protected:
    // The threat closes from 500 units to 400 in 2 s, seen over the target's nose.
    ExportTest() {
        TestSample first{.time = 0.1, .target = {2900.0, -2300.0, -700.0}, .threat = {3400.0, -2300.0, -700.0}};
        TestSample last = first;
        last.time = 2.1;
        last.threat[0] = 3300.0;
        file = folder.write(
            "ETXYZ.OUT.a", (trajectoryHeader() + trajectoryRecord(last) + trajectoryRecord(first)).toStdString());
    }

    TemporaryDirectory folder;
    std::string file;
};

TEST_F(ExportTest, WritesARowForEachSampleInTheOrderOfTime) {
    const CommandRun run = runCommand({"export", file, "--unit", "ft"});
    EXPECT_EQ(run.status, ExitStatus::Success);
    EXPECT_EQ(
        run.out,
        "time_s,target_x_ft,target_y_ft,target_z_ft,target_roll_deg,target_pitch_deg,target_yaw_deg,threat_x_ft,"
        "threat_y_ft,threat_z_ft,threat_roll_deg,threat_pitch_deg,threat_yaw_deg,gyro_roll_deg,gyro_pitch_deg,"
        "gyro_yaw_deg,range_ft,closing_speed_ft_per_s,aspect_deg\n"
        "0.1,2900,-2300,-700,0,0,0,3400,-2300,-700,0,0,0,0,0,0,500,50,0\n"
        "2.1,2900,-2300,-700,0,0,0,3300,-2300,-700,0,0,0,0,0,0,400,50,0\n");
    EXPECT_THAT(runCommand({"export", file}).out, HasSubstr(",range_units,closing_speed_units_per_s,"));
    EXPECT_EQ(runCommand({"export", file, "--unit", "ft", "-o", folder.file("a.csv")}).out, "");
    EXPECT_EQ(readWholeFile(folder.file("a.csv")), run.out);
}

TEST_F(ExportTest, KeepsTheDigitsOfCoordinatesFarFromTheOrigin) {
    // At 4.3 million units single precision holds quarters. The threat comes 27.6 units a second closer and hits.
    const std::string utm = folder.write(
        "ETXYZ.OUT.utm", trajectoryHeader().toStdString() +
                             "0 0 500000.123 4321012.345 -1500.25 0 0 0\n500027.723 4321012.345 -1500.25 0 0 0\n"
                             "0 0 0.1 0.2 0.3\n1 0 500000.123 4321012.345 -1500.25 0 0 0\n"
                             "500000.123 4321012.345 -1500.25 0 0 0\n0 0 0 0 0\n");
    const std::string rows = runCommand({"export", utm}).out;
    EXPECT_THAT(
        rows.substr(rows.find('\n')),
        "\n0,500000.123,4321012.345,-1500.25,0,0,0,500027.723,4321012.345,-1500.25,0,0,0,0.1,0.2,0.3,27.6,27.6,0\n"
        "1,500000.123,4321012.345,-1500.25,0,0,0,500000.123,4321012.345,-1500.25,0,0,0,0,0,0,0,27.6,0\n");
}

TEST_F(ExportTest, WritesEveryNumberInItsColumn) {
    std::string text = trajectoryHeader().toStdString();
    for (int i = 0; i < 1000; ++i)
        text += std::to_string(i) + " 0 1 2 3 4 5 6\n7 8 9 10 11 12\n0 0 13 14 15\n";
    const std::string out = runCommand({"export", folder.write("long", text)}).out;
    EXPECT_THAT(out, HasSubstr("\n7,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,"));
    EXPECT_EQ(std::ranges::count(out, '\n'), 1001);
}

// The range closes by 50 a second from 500 at 0.1 s. The gyro looks along x, away from the target.
TEST_F(ExportTest, AddsColumnsOfMeasures) {
    TestSample first{.time = 0.1, .target = {2900.0, 0, 0}, .threat = {3400.0, 0, 0}};
    TestSample last{.time = 2.1, .target = {2900.0, 0, 0}, .threat = {3300.0, 0, 0}};
    last.flares = {TestFlare{.id = 8, .x = 3350, .z = 0}, TestFlare{.id = 9, .x = 3280, .z = 0}};
    const std::string path = folder.file("ETXYZ.OUT.b");
    writeTrajectory(QString::fromStdString(path), {first, last});
    const std::string plain = runCommand({"export", path, "--unit", "m"}).out;
    const auto rowsAfter = [](const std::string& all, const std::string& before) {
        std::string rows; // what each line has beside that of the other table
        std::istringstream lines(all);
        std::istringstream begins(before);
        for (std::string line, begin; std::getline(lines, line) && std::getline(begins, begin); rows += '|')
            rows += line.starts_with(begin) ? line.substr(begin.size()) : "?";
        return rows;
    };
    EXPECT_EQ(
        rowsAfter(
            runCommand({"export", path, "--unit", "m", "--measures", "range,nearest,off-boresight,time-to-go"}).out,
            plain),
        ",nearest,off_boresight_deg,time_to_go_s|,,180,10|,flare 8,180,8|");
    const std::string all = runCommand({"export", path, "--measures", "all"}).out;
    EXPECT_EQ(std::ranges::count(all.substr(0, all.find('\n')), ','), 18 + 19);
    EXPECT_EQ(
        runCommand({"export", path, "--flares"}).out,
        "time_s,flare,flare_x_units,flare_y_units,flare_z_units,flare_age_s,flare_range_units,flare_distance_units,"
        "flare_off_boresight_deg,flare_brightness,flare_band_1,flare_band_2,flare_band_3\n"
        "2.1,8,3350,0,0,0,50,450,0,1e+07,5,5,5\n"
        "2.1,9,3280,0,0,0,20,380,180,1e+07,5,5,5\n");
    EXPECT_THAT(
        runCommand({"export", path, "--flares", "--measures", "flares-burning,flare-range,range"}).out,
        HasSubstr(",flares_burning,flare_range_units,range_units\n2.1,8,3350,0,0,2,50,400\n"));
    for (const auto& [arguments, complaint] : Rows<std::vector<std::string>, const char*>{
             {{"--measures", "range,rang"}, "there is no measure rang: see sorvane measures"},
             {{"--measures", "flare-age"}, "flare-age is a measure of flares: give --flares"},
             {{"--flares", "--measures", "decoyed"}, "decoyed is no curve: see sorvane info"},
             {{"--measures", "range", "--format", "kml"}, "kml is no table: it takes neither --measures nor --flares"},
             {{"--flares", "--format", "glb"}, "glb is no table: it takes neither --measures nor --flares"}}) {
        std::vector<std::string> words{"export", path};
        words.insert(words.end(), arguments.begin(), arguments.end());
        const CommandRun run = runCommand(words);
        EXPECT_EQ(run.status, ExitStatus::Failed);
        EXPECT_EQ(run.err, std::string("sorvane export: ") + complaint + "\n");
    }
}

// Places that arithmetic of 40 digits gives.
constexpr double kTargetLatitude = 47.5206779658263;
constexpr double kTargetLongitude = -122.21149935605;
constexpr double kTargetHeight = 801.073162879754;

TEST_F(ExportTest, WritesPositionsAndTimesForCesium) {
    const std::string written = folder.file("a.CZML");
    const CommandRun run = runCommand(
        {"export", file, "-o", written, "--unit", "m", "--origin", "47.5,-122.25,100", "--epoch",
         "2026-11-21T13:30:00+01:00"});
    EXPECT_EQ(run.err, "");
    const auto json = nlohmann::json::parse(readWholeFile(written));
    ASSERT_EQ(json.size(), 3U);
    EXPECT_EQ(json[0]["id"], "document");
    EXPECT_EQ(json[0]["clock"]["interval"], "2026-11-21T12:30:00.100000Z/2026-11-21T12:30:02.100000Z");
    EXPECT_EQ(json[0]["clock"]["currentTime"], "2026-11-21T12:30:00.100000Z");
    EXPECT_EQ(json[1]["id"], "target");
    EXPECT_EQ(json[2]["id"], "threat");
    EXPECT_EQ(json[2]["point"]["color"]["rgba"], nlohmann::json::parse("[255,255,0,255]"));
    EXPECT_EQ(json[1]["position"]["interpolationDegree"], 1);
    EXPECT_EQ(json[1]["position"]["epoch"], "2026-11-21T12:30:00.000000Z");
    const auto& numbers = json[1]["position"]["cartographicDegrees"];
    ASSERT_EQ(numbers.size(), 8U);
    EXPECT_EQ(numbers[0], 0.1);
    EXPECT_NEAR(numbers[1].get<double>(), kTargetLongitude, 1e-9);
    EXPECT_NEAR(numbers[2].get<double>(), kTargetLatitude, 1e-9);
    EXPECT_NEAR(numbers[3].get<double>(), kTargetHeight, 1e-4);
    EXPECT_EQ(numbers[4], 2.1);
}

TEST_F(ExportTest, WritesPathAndTrackForEarthViewers) {
    const CommandRun run =
        runCommand({"export", file, "--format", "kml", "--unit", "m", "--origin", "47.5,-122.25,100"});
    QXmlStreamReader xml(QByteArray::fromStdString(run.out));
    int tracks = 0;
    int lines = 0;
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement) {
            tracks += xml.qualifiedName() == u"gx:Track" ? 1 : 0;
            lines += xml.name() == u"LineString" && xml.namespaceUri() == u"http://www.opengis.net/kml/2.2" ? 1 : 0;
        }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    EXPECT_EQ(tracks, 2);
    EXPECT_EQ(lines, 2);
    for (const char* const part :
         {"<color>ff00ff00</color>", "<color>ff00ffff</color>", "<styleUrl>#threat</styleUrl>",
          "<altitudeMode>absolute</altitudeMode>", "<coordinates>-122.211499356,47.520677966,801.0732\n",
          "<when>2000-01-01T00:00:02.100000Z</when>", "<gx:coord>-122.211499356 47.520677966 801.0732</gx:coord>"})
        EXPECT_THAT(run.out, HasSubstr(part));
}

TEST(LocalFrame, AgreesWithArithmeticOfManyDigits) {
    struct Row {
        GeodeticPosition origin;
        double bearing;
        double metresPerUnit;
        Triple units;
        GeodeticPosition expected;
    };
    const Row rows[] = {
        {{47.5, -122.25, 100}, 90, 1, {2900, -2300, -700}, {kTargetLatitude, kTargetLongitude, kTargetHeight}},
        {{-33.5, 151.25, 0}, 0, 0.3048, {2900, -2300, -700}, {-33.4920305711451, 151.242456595436, 213.459957778556}},
        {{0, 0, 0}, 90, 1, {100000, -200000, -30000}, {1.7993961051415, 0.894037210564531, 33921.0124443514}},
        {{89.999, 10, 0}, 90, 1, {0, -1000, -10}, {89.9920469800318, -170.0, 10.0781298383775}},
        {{-45, 180, -50}, 30, 1, {-5000, 12345, -8000}, {-45.0943400634224, -179.896072573795, 7963.89518290831}},
        {{52, 179.9999, 0}, 90, 1, {1000, 0, 0}, {51.9999991001005, -179.985539300149, 0.0782296895721817}},
    };
    for (const Row& row : rows) {
        const GeodeticPosition found = LocalFrame(row.origin, row.bearing, row.metresPerUnit).positionOf(row.units);
        EXPECT_NEAR(found.latitudeDegrees, row.expected.latitudeDegrees, 1e-11);
        EXPECT_NEAR(
            found.longitudeDegrees, row.expected.longitudeDegrees,
            1e-9 * std::abs(row.origin.latitudeDegrees > 89 ? 10 : 0.1));
        EXPECT_NEAR(found.height, row.expected.height, 2e-8);
    }
}

TEST(WorldTime, ReadsDatesAndStaysInFourDigitYears) {
    EXPECT_EQ(worldTimeText(parseWorldTime("2024-02-28").value()), "2024-02-28T00:00:00.000000Z");
    EXPECT_EQ(
        worldTimeText(worldTimeAfter(parseWorldTime("2024-02-28T23:59:59.5").value(), 0.75).value()),
        "2024-02-29T00:00:00.250000Z");
    EXPECT_EQ(worldTimeText(worldTimeAfter(0, -1e-6).value()), "1969-12-31T23:59:59.999999Z");
    EXPECT_FALSE(parseWorldTime("yesterday"));
    for (const double seconds : {1e12, -1e12, 1e300, std::nan("")})
        EXPECT_FALSE(worldTimeAfter(0, seconds));
}

TEST(WorldTime, WithoutAZoneIsUtcWhereverTheUserIs) {
    {
        const EnvironmentVariable zone("TZ", "UTC-9");
        ::tzset();
        EXPECT_EQ(worldTimeText(parseWorldTime("2024-02-28T12:00:00").value()), "2024-02-28T12:00:00.000000Z");
    }
    ::tzset();
}

TEST_F(ExportTest, SaysWhatIsWrongAndLeavesNoFile) {
    const std::string geometry = folder.write("a.vnl", "2 2\n");
    const std::string late = folder.write(
        "late",
        (trajectoryHeader() + trajectoryRecord({.time = 0.0}) + trajectoryRecord({.time = 1e12})).toStdString());
    struct Row {
        std::vector<std::string> arguments;
        std::string message;
    };
    const std::string out = folder.file("out/a.kml");
    const std::string damaged = folder.write("damaged.Z", "\x1f\x9d\x90nonsense");
    const Row rows[] = {
        {{folder.file("missing")}, folder.file("missing") + ": there is no such file"},
        {{folder.path().string()}, folder.path().string() + ": is not a regular file"},
        {{geometry}, geometry + ": is no trajectory"},
        {{folder.write("ETXYZ.OUT.empty", "")}, folder.file("ETXYZ.OUT.empty") + ": holds no samples"},
        {{file, "-o", "a.txt"}, "a.txt: its name tells no format; give --format"},
        {{file, "--format", "kml"}, "kml needs --origin and --unit"},
        {{file, "--format", "czml", "--origin", "1,2"}, "czml needs --origin and --unit"},
        {{file, "--format", "kml", "--unit", "m", "--origin", "91,2"}, "--origin is not LAT,LON or LAT,LON,ALT: 91,2"},
        {{file, "--format", "kml", "--unit", "m", "--origin", "1,2", "--epoch", "soon"},
         "--epoch is no date of ISO 8601: soon"},
        {{file, "--format", "kml", "--unit", "m", "--origin", "1,2", "--x-bearing", "nan"},
         "--x-bearing is no finite number"},
        {{damaged}, damaged + ": its compressed data are damaged or cut short"},
        {{late, "--format", "kml", "--unit", "m", "--origin", "1,2"},
         late + ": its times lie outside the years 1 to 9999"},
        {{file, "--unit", "m", "--origin", "1,2", "-o", out}, out + ": No such file or directory"},
    };
    for (const Row& row : rows) {
        std::vector<std::string> arguments{"export"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const CommandRun run = runCommand(arguments);
        EXPECT_EQ(run.status, ExitStatus::Failed);
        EXPECT_EQ(run.err, "sorvane export: " + row.message + "\n");
        EXPECT_EQ(run.out, "");
    }
    EXPECT_EQ(runCommand({"export", file, "--unit", "miles"}).status, ExitStatus::Failed);
}

// As a shell runs it: with pipes, and with disks that are full.
TEST_F(ExportTest, ReadsPipesAndTellsOfResultsThatAreLost) {
    const std::string whole = runCommand({"export", file}).out;
    const std::string command = "'" SORVANE_COMMAND "'";
    const std::string out = folder.file("out");
    struct Row {
        std::string line;
        int status;
        std::string result;
    };
    const Row rows[] = {
        {"(head -c 300 '" + file + "'; sleep 0.1; tail -c +301 '" + file + "') | " + command + " export -", 0, whole},
        {"compress -cf '" + file + "' >'" + file + ".Z'; " + command + " export '" + file + ".Z'", 0, whole},
        {command + " export '" + file + "' -o /dev/stdout", 0, whole},
        {command + " export '" + file + "' >/dev/full", 2, ""},
        {command + " export --help >/dev/full", 2, ""},
        {command + " export - <&-", 2, ""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(WEXITSTATUS(std::system(("(" + row.line + ") >'" + out + "' 2>/dev/null").c_str())), row.status);
        EXPECT_EQ(readWholeFile(out), row.result) << row.line;
    }
}

TEST_F(ExportTest, TakesPlacesAnywhereOnTheEarth) {
    for (const char* const origin : {"-90,0", "90,-360", "-33.5,360,-50"})
        EXPECT_EQ(
            runCommand({"export", file, "--format", "kml", "--unit", "m", "--origin", origin}).status,
            ExitStatus::Success)
            << origin;
}

TEST_F(ExportTest, AResultFollowsALinkAndTheUsersMask) {
    const std::string table = folder.write("a.csv", "before");
    const std::string link = folder.file("link.csv");
    std::filesystem::create_symlink(table, link);
    const mode_t before = ::umask(0022);
    EXPECT_EQ(runCommand({"export", file, "-o", link}).status, ExitStatus::Success);
    ::umask(before);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_EQ(std::filesystem::status(table).permissions(), static_cast<std::filesystem::perms>(0644));
}

TEST_F(ExportTest, AFailedWriteLeavesWhatWasThere) {
    const std::string table = folder.write("a.csv", "before");
    CommandRun run;
    {
        const FullDisk full(100);
        run = runCommand({"export", file, "-o", table});
    }
    EXPECT_EQ(run.status, ExitStatus::Failed);
    EXPECT_EQ(run.err, "sorvane export: " + table + ": could not be written\n");
    EXPECT_EQ(readWholeFile(table), "before");
}
} // namespace
