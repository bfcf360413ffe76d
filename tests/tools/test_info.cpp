// `sorvane info` on good and on broken files.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "commandrun.h"
#include "environmentvariable.h"
#include "infotext.h"
#include "makedemonstration.h"
#include "standardinput.h"
#include "temporarydirectory.h"
#include "trajectorytext.h"

using namespace sorvane;

namespace {
using Json = nlohmann::json;
using testing::HasSubstr;

// Describes files with --json; `err` gets what stands on standard error.
class Info : public testing::Test {
protected:
    Json describe(std::vector<std::string> arguments, ExitStatus expected = ExitStatus::Success) {
        arguments.insert(arguments.begin(), {"info", "--json"});
        const CommandRun run = runCommand(arguments);
        EXPECT_EQ(run.status, expected) << run.err;
        err = run.err;
        const Json all = Json::parse(run.out);
        EXPECT_EQ(all.at("layout"), 1);
        return all.at("files");
    }

    // Two bodies that pass each other: the threat goes from (0, 30, 40) to (200, 30, 40) in 2 s past a target that
    // stays at (50, 0, 0). They come closest, 50 apart, at 0.5 s.
    std::string writePassage(const char* name) const {
        TestFlare dim{8};
        dim.scalar = 2e6;
        TestSample first{0.0, {50, 0, 0}, {0, 30, 40}, {}, {}};
        TestSample middle{0.25, {50, 0, 0}, {25, 30, 40}, {}, {TestFlare{7}, dim}};
        TestSample last{2.0, {50, 0, 0}, {200, 30, 40}, {}, {TestFlare{9}, TestFlare{7}}};
        const std::string path = directory.file(name);
        writeTrajectory(QString::fromStdString(path), {first, middle, last});
        return path;
    }

    const TemporaryDirectory directory;
    const EnvironmentVariable root{"PELSAR_DATA", directory.file("data/")};
    std::string err;
};

TEST_F(Info, GivesTheNumbersOfAnEngagement) {
    const Json file = describe({"--unit", "m", writePassage("ETXYZ.OUT.1")})[0];
    EXPECT_EQ(file["kind"], "trajectory");
    EXPECT_EQ(file["samples"], 3);
    EXPECT_EQ(file["header"]["field_of_view_deg"], 1.5);
    EXPECT_EQ(file["header"]["terrain_triple_b"], Json({4.0, 5.0, 6.0}));
    EXPECT_EQ(
        file["time"], Json(
                          {{"first_s", 0.0},
                           {"last_s", 2.0},
                           {"step_minimum_s", 0.25},
                           {"step_median_s", 1.75},
                           {"step_maximum_s", 1.75}}));
    const double greyOfEight = file["flares"]["greys"][1]["grey"];
    EXPECT_EQ(
        file["flares"], Json(
                            {{"distinct", 3},
                             {"most_at_once", 2},
                             {"samples", 2},
                             {"first_s", 0.25},
                             {"last_s", 2.0},
                             // 4 · 2 · 10⁶ / (5 · 895.6922)² is 0.39887.
                             {"greys", Json::array(
                                           {{{"flare", 7}, {"grey", 1.0}},
                                            {{"flare", 8}, {"grey", greyOfEight}},
                                            {{"flare", 9}, {"grey", 1.0}}})}}));
    EXPECT_NEAR(greyOfEight, 0.39887, 1e-5);
    EXPECT_EQ(file["target_extent"]["minimum_m"], Json({50.0, 0.0, 0.0}));
    EXPECT_EQ(file["threat_extent"]["maximum_m"], Json({200.0, 30.0, 40.0}));
    EXPECT_DOUBLE_EQ(file["closest_approach"]["time_s"], 0.5);
    EXPECT_DOUBLE_EQ(file["closest_approach"]["range_m"], 50.0);
    // At the start the threat is 50·√2 away and comes on at 100 m/s along x: 100 · 50 / (50·√2).
    EXPECT_NEAR(file["start"]["range_m"], 70.7106781, 1e-6);
    EXPECT_NEAR(file["start"]["closing_speed_m_per_s"], 70.7106781, 1e-6);
    EXPECT_NEAR(file["end"]["range_m"], 158.1138830, 1e-6);
    EXPECT_NEAR(file["end"]["closing_speed_m_per_s"], -94.8683298, 1e-6);
}

TEST_F(Info, GivesTheMeasuresOfTheEngagementAndOfItsFlares) {
    // The target stays in the field, a flare nearer to the axis in the last second; the pass is 100 away, at 2 s.
    const auto at = [](double time, QList<TestFlare> flares) {
        const double x = 100.0 * (time - 2.0);
        return TestSample{time, {x + 1.0, 0, -100}, {x, 0, 0}, {0, 90, 0}, std::move(flares)};
    };
    const TestFlare flare{.id = 4, .x = 0.0, .y = 0.0, .z = -50.0};
    const std::string path = directory.file("ETXYZ.OUT.1");
    writeTrajectory(QString::fromStdString(path), {at(0, {}), at(1, {}), at(2, {flare})});
    const Json file = describe({"--unit", "m", path})[0];
    const double range = std::hypot(1.0, 100.0);
    EXPECT_DOUBLE_EQ(file["measures"]["closest_approach_m"], file["closest_approach"]["range_m"]);
    EXPECT_NEAR(file["measures"]["closest_approach_m"], range, 1e-9);
    EXPECT_EQ(file["measures"]["first_flare_time_s"], 2.0);
    EXPECT_EQ(file["measures"]["target_time_in_field_s"], 2.0);
    EXPECT_EQ(file["measures"]["target_last_nearest_s"], 1.0);
    EXPECT_EQ(file["measures"]["decoyed"], true);
    EXPECT_EQ(file["measures"]["flares"], Json::array({{{"flare", 4}, {"flare_time_in_field_s", 0.0}}}));
    const std::string text = runCommand({"info", writePassage("ETXYZ.OUT.2")}).out;
    EXPECT_THAT(text, HasSubstr("\n    decoyed                          -\n"));
    EXPECT_THAT(text, HasSubstr("\n    first flare time                 0.250 s\n"));
}

TEST_F(Info, GivesNumbersOfCoordinatesFarFromTheOriginInFull) {
    // At 4.3 million units single precision holds quarters. 27.6 units closer a second, in steps of 0.004 s.
    std::string records;
    for (int i = 0; i <= 3; ++i) {
        char record[200];
        std::snprintf(
            record, sizeof record, "%.3f 0 500000.1 4321012.345 0 0 0 0\n%.4f 4321012.345 0 0 0 0\n0 0 0 0 0\n",
            14.4 + 0.004 * i, 500110.5 - 0.1104 * i);
        records += record;
    }
    const Json file = describe({directory.write("ETXYZ.OUT.1", trajectoryHeader().toStdString() + records)})[0];
    EXPECT_EQ(file["time"]["step_maximum_s"].dump(), "0.004");
    EXPECT_EQ(file["start"]["range_units"].dump(), "110.4");
    EXPECT_NEAR(file["start"]["closing_speed_units_per_s"], 27.6, 1e-6);
    EXPECT_EQ(file["closest_approach"]["range_units"].dump(), "110.0688");
    EXPECT_EQ(file["threat_extent"]["minimum_units"].dump(), "[500110.1688,4321012.345,0.0]");
}

TEST_F(Info, TakesTheSamplesThatTheViewerHas) {
    const auto at = [](double time, double x) {
        return TestSample{time, {x, 0, 0}, {x, 10, 0}, {}, {}};
    };
    const std::string path = directory.file("ETXYZ.OUT.1");
    writeTrajectory(QString::fromStdString(path), {at(3, 30), at(1, 99), at(2, 20), at(1, 10)});
    const Json file = describe({path})[0];
    EXPECT_EQ(file["samples"], 3) << "a later record replaces an earlier one of its time";
    EXPECT_EQ(file["time"]["first_s"], 1.0);
    EXPECT_EQ(file["time"]["step_maximum_s"], 1.0);
    EXPECT_EQ(file["target_extent"]["maximum_units"], Json({30.0, 0.0, 0.0}));
}

TEST_F(Info, TellsWhichFilesAreMissingAndWhatIsTakenInstead) {
    directory.write("data/tgt4004/tgt4004.vnl", "x");
    const Json file = describe({writePassage("ETXYZ.OUT.1")})[0];
    EXPECT_EQ(file["terrain"], "stock");
    EXPECT_EQ(file["target"], "stock");
    EXPECT_EQ(file["band"], "1");
    EXPECT_EQ(
        file["files"][2], Json(
                              {{"role", "target geometry"},
                               {"path", "/nowhere/tgt.vnl"},
                               {"exists", false},
                               {"fallback", directory.file("data/tgt4004/tgt4004.vnl")},
                               {"fallback_exists", true}}));
    EXPECT_EQ(
        file["files"][8], Json(
                              {{"role", "threat radiance"},
                               {"path", directory.file("data/tgt0450/tgt0450_b0001.rad")},
                               {"exists", false},
                               {"fallback", nullptr},
                               {"fallback_exists", nullptr}}));
}

TEST_F(Info, ReadsStandardInput) {
    const StandardInput input(writePassage("passage"));
    const Json described = describe({"-"})[0];
    EXPECT_EQ(described["path"], "-");
    EXPECT_EQ(described["samples"], 3);
}

TEST_F(Info, DescribesEveryFileOfTheDemonstration) {
    ASSERT_FALSE(sorvane::makeDemonstration(directory.path()));
    std::vector<std::string> paths;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory.path()))
        if (entry.is_regular_file() && !entry.path().string().ends_with("t") && !entry.path().string().ends_with("g"))
            paths.push_back(entry.path().string());
    const auto [turn, weave] = std::pair{directory.file("ETXYZ.OUT.turn"), directory.file("ETXYZ.OUT.weave.Z")};
    paths.insert(paths.begin(), {turn, weave, directory.file("data/ter0020/ter0020.xml")});
    const Json files = describe(paths);
    EXPECT_EQ(err, "");
    for (const Json& file : files)
        EXPECT_NE(file["kind"], "unknown") << file["path"];
    EXPECT_EQ(files[1]["is_compressed"], true);
    EXPECT_EQ(files[1]["target"], "named");
    const Json& set = files[2];
    EXPECT_EQ(set["tiles"].size(), 10U);
    EXPECT_EQ(set["tiles"][0]["columns"], 97);
    EXPECT_EQ(set["tiles"][0]["normals_exist"], true);
    EXPECT_EQ(set["reflectance_by"], "spectra");
    EXPECT_EQ(set["classes"][1], Json({{"class", 2}, {"sample", "meadow"}, {"reflectance", 0.05}}));
    EXPECT_EQ(set["companions"][0]["exists"], true);
    EXPECT_EQ(set["messages"], Json({"total of 10 subterrains"}));
}

TEST_F(Info, WalksDirectories) {
    directory.write("run/b/ETXYZ.OUT.2", readWholeFile(writePassage("passage")));
    directory.write("run/a.band", "band\n3.0 5.0\n");
    directory.write("run/notes", "of any kind\n");
    const Json files = describe({directory.file("run"), directory.file("passage")});
    ASSERT_EQ(files.size(), 3U);
    EXPECT_EQ(files[0]["kind"], "band");
    EXPECT_EQ(files[1]["path"], directory.file("run/b/ETXYZ.OUT.2"));
    EXPECT_EQ(files[2]["kind"], "trajectory");
}

TEST_F(Info, DescribesSmallFiles) {
    std::string radiance(84 + 2 * 8, '\0');
    const std::int32_t facets = 2;
    const float values[] = {30.0F, 10.0F};
    std::memcpy(radiance.data() + 40, &facets, sizeof facets);
    std::memcpy(radiance.data() + 76, values, sizeof values);
    const Json files = describe(
        {"--unit", "ft",
         directory.write("a.vnl", "3 1\n-1 2 -3 4 -5 6\n0 0 0 0 0 1 v\n1 0 0 0 0 1 v\n0 2 0 0 0 1 v\n1 1 2 3 p\n"),
         directory.write("a.brdf", "BRDF\n2\n.1 .78 0 .3 0 x\n.2 .5 0 .3 2 y\n1 3 1 x\n4 4 2 y\n"),
         directory.write("a.rad", radiance), directory.write("a.atm", "1 2 3\n1 2 3 4 5 6 7 8 60 90\n1 2 3 4\n"),
         directory.write("rotors", "# parts\n1 4 0.5 0 2 0 0 1 4.9\n"), directory.write("a.band", "band\n3.0 5.0\n"),
         directory.write("a.cls2mat", "1 2\n8 0\n"), directory.write("a.temp", "291 0.98\n")});
    EXPECT_EQ(files[0]["bounding_box"]["maximum_ft"], Json({2.0, 4.0, 6.0}));
    EXPECT_EQ(files[0]["extent"]["maximum_ft"], Json({1.0, 2.0, 0.0}));
    EXPECT_EQ(files[0]["vertices"], 3);
    EXPECT_EQ(files[1]["classes"][0]["emissivity"], 0.78);
    EXPECT_EQ(files[1]["classes"][0]["facets"], 3);
    EXPECT_EQ(files[1]["classes"][1]["mode"], 2);
    EXPECT_EQ(files[2]["kind"], "body radiance");
    EXPECT_EQ(files[2]["radiance"]["minimum_facet"], 2);
    EXPECT_NEAR(files[2]["radiance"]["maximum_W_per_cm2_sr"], 3e-5, 1e-11);
    EXPECT_EQ(files[3]["solar_zenith_deg"], 120.0);
    EXPECT_NEAR(files[3]["direct_solar_W_per_cm2_sr"], 3e-4, 1e-10);
    EXPECT_EQ(
        files[4]["rotors"][0], Json(
                                   {{"rotor", 1},
                                    {"first_facet", 1},
                                    {"last_facet", 4},
                                    {"hub_ft", {0.5, 0.0, 2.0}},
                                    {"axis", {0.0, 0.0, 1.0}},
                                    {"turns_per_s", 4.9}}));
    EXPECT_EQ(files[5]["upper_edge"], 5.0);
    EXPECT_EQ(files[6]["classes"][0]["material"], 2);
    EXPECT_EQ(files[7]["materials"][0]["emissivity"], 0.98);
    EXPECT_EQ(files[2]["emittance"]["maximum_facet"], 1) << "the first of equal ones";
}

TEST_F(Info, DescribesSpectraAndWhatClassesReflect) {
    const std::string header(26, '\n');
    const auto spectrum = [&](const std::string& points) {
        return "Name: a sample\n" + header.substr(1) + points;
    };
    // Over 3 to 5: the mean of 10 and 30 % over 1, and of 30 and 20 % over 1.
    directory.write("aster/grass.txt", spectrum("2 80\n3 10\n4 30\n5 20\n6 90\n"));
    directory.write("aster/falling.txt", spectrum("6 90\n5 20\n4 30\n3 10\n2 80\n"));
    directory.write("set.band", "band\n3 5\n");
    directory.write("set.cls2aster", "7 grass\n7 falling\n9 falling\n8 aster::alpha\n");
    directory.write(
        "set.xml", "<terrain><base>set</base><asterdb>" + directory.file("aster") +
                       "</asterdb><subs><subterrain n=\"0\"/></subs></terrain>\n");
    const Json files = describe(
        {"--band", "3-5", directory.file("aster/grass.txt"), directory.file("aster/falling.txt"),
         directory.file("set.xml")});
    EXPECT_EQ(files[0]["points"], 5);
    EXPECT_EQ(files[0]["shortest_wavelength"], 2.0);
    EXPECT_EQ(files[0]["longest_wavelength"], 6.0);
    EXPECT_EQ(files[0]["order"], "rising");
    EXPECT_NEAR(files[0]["mean_reflectance"], 0.225, 1e-6);
    EXPECT_EQ(files[1]["order"], "falling");
    EXPECT_NEAR(files[1]["mean_reflectance"], 0.225, 1e-6);
    const Json& classes = files[2]["classes"];
    ASSERT_EQ(classes.size(), 3U) << files[2];
    EXPECT_EQ(classes[0]["class"], 7);
    EXPECT_EQ(classes[0]["sample"], "grass");
    EXPECT_NEAR(classes[1]["reflectance"], 0.225, 1e-6);
    EXPECT_EQ(classes[2]["reflectance"], nullptr);
    EXPECT_EQ(describe({"--band", "10-11", directory.file("aster/grass.txt")})[0]["mean_reflectance"], nullptr);
    EXPECT_FALSE(describe({directory.file("aster/grass.txt")})[0].contains("mean_reflectance"));
    for (const char* const wrong : {"3", "5-3", "3-", "-5", "a-b", "3-5-7"})
        EXPECT_EQ(runCommand({"info", "--band", wrong, directory.file("set.band")}).status, ExitStatus::Failed);
}

// A raster header of 2 rows and 3 columns, and whatever samples.
std::string torvale(std::int32_t packtype, std::size_t sampleBytes) {
    const std::int32_t sizes[] = {2, 3, 1, packtype};
    std::string file(512 + sampleBytes, '\0');
    std::memcpy(file.data() + 4, sizes, sizeof sizes);
    return file;
}

TEST_F(Info, GivesTheFieldsOfARastersHeader) {
    std::string top = torvale(1, 1024);
    std::memcpy(top.data() + 36, "TOPO  ", 6);
    std::string bkg = "MORLAN" + std::string(506 + 4, '\0');
    std::memcpy(bkg.data() + 68, "CLASS", 5);
    const std::int32_t one = 1;
    for (const auto size : {std::size_t{328}, std::size_t{332}})
        std::memcpy(bkg.data() + size, &one, sizeof one);
    std::memcpy(bkg.data() + 376 + 60, "second", 6);
    const Json files = describe({directory.write("a.top", top), directory.write("a.cls", bkg)});
    EXPECT_EQ(files[0]["family"], "TORVALE");
    EXPECT_EQ(files[0]["content"], "topography");
    EXPECT_EQ(files[0]["columns"], 3);
    EXPECT_EQ(files[0]["header"]["fileType"], "TOPO");
    EXPECT_EQ(files[0]["header"]["MinVals"].size(), 10U);
    EXPECT_FALSE(files[0]["header"].contains("reserved1"));
    EXPECT_EQ(files[1]["family"], "BKG");
    EXPECT_EQ(files[1]["header"]["headerSignature"], "CLASS");
    EXPECT_EQ(files[1]["header"]["transform"].size(), 6U);
    EXPECT_EQ(files[1]["header"]["associated2"], "second");
    EXPECT_FALSE(files[1]["header"].contains("fileId"));
}

TEST_F(Info, GoesOnAfterBrokenFiles) {
    ASSERT_EQ(::mkfifo(directory.file("fifo").c_str(), 0600), 0);
    const std::string header = trajectoryHeader().toStdString();
    std::string tall = torvale(2, 100); // 40 rows, of which it holds a few, and not even a byte a sample
    tall[4] = 40;
    const struct {
        std::string path;
        const char* error;
    } rows[] = {
        {directory.file("missing"), "there is no such file"},
        {directory.file("fifo"), "is not a regular file"},
        {directory.write("ETXYZ.OUT.0", header), "holds no samples"},
        {directory.write("ETXYZ.OUT.2", ""), "is empty"},
        {directory.write("broken.Z", "nothing compressed"), "can't be decompressed, or is empty"},
        {directory.write("ETXYZ.OUT.cut", std::string(header) + "0 1 1 2 3 0 0 0\n"),
         "the data end within the last record"},
        {directory.write("a.vnl", "1 1\n0 0 0 0 0 0\n0 0 0 0 0 1 v\n1 1 1 2 p\n"),
         "ends the viewer: us2 should be less than numVerts = 1, but is 1."},
        {directory.write("b.vnl", "3 2000000000\n"), "announces more or fewer facets than it can hold"},
        {directory.write("c.vnl", "x\n"), "can't be read: Malformed line 1. Expected 2 ints, but received \"x\n\"."},
        {directory.write("a.brdf", "BRDF\n0\n"),
         "can't be read: Invalid number of BRDF classes on line 2. Should be positive but is 0."},
        {directory.write("a.rad", "short"), "is shorter than its header"},
        {directory.write("parts", "4 1 0 0 0 0 0 1 1\n"),
         "ends the viewer: error: Rotor::Rotor: Invalid facet range 4 to 1 for rotor #1."},
        {directory.write("a.top", torvale(1, 512 + 5)), "ends in row 2 of 2"},
        {directory.write("b.top", torvale(3, 1024)), "has a packtype that is refused, 3"},
        {directory.write("c.top", "short"), "is shorter than its header"},
        {directory.write("p.norm", torvale(5, 100)), "has a packtype that is refused, 5"},
        {directory.write("b.rad", tall), "ends in row 9 of 40"},
        {directory.write("m.norm", "MORLAN" + std::string(600, 'x')),
         "is not a raster of normals: its header signature is not \"NORM\""},
        {directory.write("a.xml", "<terrain><subs/></terrain>"), "describes no tiles: total of 0 subterrains"},
        {directory.write("a.band", "no numbers\n"), "has no band edges above 0"},
        {directory.write("notes", "of any kind\n"), "is none of the files that the viewer reads"},
    };
    std::vector<std::string> paths;
    for (const auto& row : rows)
        paths.push_back(row.path);
    paths.push_back(writePassage("good"));
    const Json files = describe(paths, ExitStatus::ProblemsFound);
    std::string expected;
    for (std::size_t i = 0; i < std::size(rows); ++i) {
        EXPECT_EQ(files[i].value("error", ""), rows[i].error) << rows[i].path;
        std::string line = "sorvane info: " + rows[i].path + ": " + rows[i].error;
        std::ranges::replace(line, '\n', '?'); // what a file holds can't break it
        expected += line + "\n";
    }
    EXPECT_EQ(err, expected);
    EXPECT_EQ(files.back()["samples"], 3);
    EXPECT_EQ(files[2]["header"]["integer_10"], 7) << "what could be read is told";
}

TEST_F(Info, PrintsTextForPeople) {
    const CommandRun run = runCommand(
        {"info", "--unit", "m", writePassage("run"), directory.write("a.brdf", "BRDF\n1\n.1 .78 0 .3 0 x\n1 3 1 x\n")});
    EXPECT_THAT(run.out, HasSubstr(directory.file("run") + "\n  kind           trajectory\n"));
    EXPECT_THAT(run.out, HasSubstr("    step minimum  0.250 s\n"));
    EXPECT_THAT(run.out, HasSubstr("    closing speed  70.7 m/s\n"));
    EXPECT_THAT(run.out, HasSubstr("    maximum  200.0 m, 30.00 m, 40.00 m\n"));
    EXPECT_THAT(
        run.out, HasSubstr("    class  facets  diffuse reflectance  emissivity  b  e    G  mode\n"
                           "    1      3       0.1                  0.78        0  0.3  1  0\n"));
}

TEST(InfoText, AlignsColumnsByCharacters) {
    std::ostringstream out;
    writeInfoText(
        {{"path", "a\x1b"}, {"rows", {{{"name", "Ü"}, {"on", true}}, {{"name", "xyz"}, {"on", false}}}}}, out);
    EXPECT_EQ(out.str(), "a?\n  rows\n    name  on\n    Ü     yes\n    xyz   no\n");
}

TEST_F(Info, PrintsValidJsonForNamesThatAreNotText) {
    const Json file = describe({directory.write("bad\xff.band", "x\n3 5\n")})[0];
    EXPECT_THAT(file["path"].get<std::string>(), testing::EndsWith("bad\xEF\xBF\xBD.band"));
    EXPECT_EQ(file["lower_edge"], 3.0);
}

TEST_F(Info, RefusesWrongUsage) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"info"}, {"info", "--unit", "yd", writePassage("run")}, {"info", "--nonsense"}})
        EXPECT_EQ(runCommand(arguments).status, ExitStatus::Failed);
}
} // namespace
