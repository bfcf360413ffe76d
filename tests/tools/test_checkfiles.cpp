// `sorvane check` of models, of terrain and of directories.
#include <algorithm>
#include <cstring>
#include <limits>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "commandrun.h"
#include "environmentvariable.h"
#include "terrainfiles.h"

using namespace sorvane;

namespace {
using testing::HasSubstr;

const std::string kGeometry = "3 1\n0 1 0 1 0 1\n0 0 0 0 0 1 v\n1 0 0 0 0 1 v\n0 1 0 0 0 1 v\n1 1 2 3 f\n";
const std::string kReflectance = "BRDF\n1\n0.5 0.5 0 1 2 c\n1 1 1 f\n";
const std::string kAtmosphere = "1 2 3\n1 2 3 4 5 6 7 8 30 40\n1 2 3 4\n";

std::string radiance(int facets, float value = 1.0F) {
    std::string bytes(76, '\0');
    std::memcpy(bytes.data() + 40, &facets, sizeof facets);
    const std::string values = bytesOf(std::vector<float>(static_cast<std::size_t>(facets), value));
    return bytes + values + std::string(8, '\0') + values;
}

class CheckFiles : public testing::Test {
protected:
    // What is found in `path`, without the folder of the test.
    std::string findings(const std::string& path, const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments = {"check", path};
        arguments.insert(arguments.end(), options.begin(), options.end());
        lastRun_ = runCommand(arguments);
        EXPECT_THAT(lastRun_.err, HasSubstr(" error"));
        std::string out = lastRun_.out;
        const std::string folder = directory_.path().string() + "/";
        for (std::size_t at = out.find(folder); at != std::string::npos; at = out.find(folder))
            out.erase(at, folder.size());
        return out;
    }

    TemporaryDirectory directory_;
    EnvironmentVariable dataRoot_{"PELSAR_DATA", directory_.file("none/")};
    CommandRun lastRun_;
};

TEST_F(CheckFiles, TellsWhatIsWrongWithASingleFile) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    BKG_header lettered = bkgHeader(2, 2);
    std::memcpy(lettered.dimensions, "3x2", 3);
    const std::string bkg = readWholeFile(writeBkg(directory_.file("header"), lettered, ""));
    GHead odd = torvaleHeader(2, 2, 7);
    GHead topography = torvaleHeader(2, 2, 1);
    topography.xCellSize = topography.yCellSize = 1.0F;
    GHead flat = topography;
    flat.zscale = 0.0F;
    const struct {
        std::string name;
        std::string contents;
        std::string findings;
    } cases[] = {
        {"a.vnl", kGeometry, ""},
        {"b.vnl", kGeometry.substr(0, 40), "b.vnl:4:1: error: Malformed line 4. Received \"1 0 0 0 0 \".\n"},
        {"c.vnl", "3 1\n0 1 0 1 0 1\n0 0 0 0 0 1 v\n1 0 0 0 0 1 v\n0 1 0 0 0 1 v\n1 0 2 3 f\n",
         "c.vnl:1:1: error: us0 should be less than numVerts = 3, but is 65535.\n"},
        {"d.vnl", "3 1\n0 1 0 1 0 1\n0 0 0 0 0 1 v\n1 nan 0 0 0 1 v\n0 1 0 0 0 1 v\n1 1 2 3 f\n",
         "d.vnl:1:1: error: facet 1 has a vertex or a normal that is not finite\n"},
        {"e.vnl", "3 1\n0 1 0 1 0 1\n0 0 0 0 0 1 v\n1 0 0 0 0 1 v\n0 1 0 0 0 1 v\n1 1 65538 3 f\n",
         "e.vnl:6:1: error: facet 1 names vertex 65538, which is not there: vertex 2 takes its place, since only 16 "
         "bits of the numbers count in a body of up to 65536 vertices\n"},
        {"a.brdf", kReflectance, ""},
        {"e.brdf", "BRDF\n1\n0.5 0.5 -1 1 2 c\n",
         "e.brdf:3:1: error: Invalid brdf_fresnel (b) parameter on line 3 (parameter #3). b should be nonnegative but "
         "is "
         "-1.000000.\n"},
        {"f.brdf", "BRDF\n1\n0.5 0.5 1 1 2 c\n1 1 1 f\n",
         "f.brdf:3:1: error: the class's parameters, or the normalisation that follows from the third, are not "
         "finite\n"},
        {"g.brdf", "BRDF\n1\n0.5 0.5 0 1 2 c\n1 1 1 f\n3 4 1 f\n",
         "g.brdf:1:1: error: Invalid BRDF class index -1 for facet 1. Class index should be between nonnegative and "
         "smaller than numBrdfClasses_ = 1.\n"},
        {"a_1.rad", radiance(1), ""}, // of the one facet of a.vnl
        {"h.rad", radiance(2, kInfinity),
         "h.rad:1:1: error: the radiance of facet 1 is not finite\n"
         "h.rad:1:1: error: the emittance of facet 1 is not finite\n"},
        {"i.rad", radiance(2, std::numeric_limits<float>::quiet_NaN()),
         "i.rad:1:1: error: RadFile::Load: NaN radiance values detected!\n"},
        {"a_2.rad", radiance(2), "a_2.rad:1:1: error: the file is of 2 facets, but the geometry \"a.vnl\" is of 1\n"},
        {"a_2.brdf", "BRDF\n1\n0.5 0.5 0 1 2 c\n1 3 1 f\n",
         "a_2.brdf:1:1: error: the file is of 3 facets, but the geometry \"a.vnl\" is of 1\n"},
        {"a.atm", kAtmosphere, ""},
        {"b.atm", "1 2 3\n1 2 3\n", "b.atm:2:1: error: Unexpected file format, line 2. Received \"1 2 3\".\n"},
        {"a.rotor", "0 4 0 0 0 0 0 1 2\n",
         "a.rotor:1:1: error: error: Rotor::Rotor: Invalid facet range 0 to 4 for "
         "rotor #1.\n"},
        {"a.sff-txt", "1\n2 1 1 0\n",
         "a.sff-txt:2:1: error: Malformed line 2 when reading facet 1. Received \"2 1 1 "
         "0\".\n"},
        {"a.top", bytesOf(topography) + std::string(516, 'x'), ""},
        {"b.top", bytesOf(odd) + std::string(1024, 'x'),
         "b.top:1:1: error: the packing 7 is none of 0, 1 and 2: no sample is read\n"},
        {"e.top", bytesOf(flat) + std::string(516, 'x'), "e.top:1:1: warning: the samples are scaled by 0.000000\n"},
        {"f.top", bytesOf(topography) + std::string(1025, 'x'),
         "f.top:1:1: warning: the 2 x 2 samples need 516 bytes, and there are 1025\n"},
        {"c.top", bytesOf(topography) + "x",
         "c.top:1:1: error: When reading row 1, expected 2 items of size 2 bytes, but only received 0.\n"},
        {"d.top", "x", "d.top:1:1: error: the file is shorter than the 512 bytes of a header\n"},
        {"a.cls", bkg + "abc",
         "a.cls:1:1: warning: the header says 2 x 2 samples, and in letters \"3x2\"\n"
         "a.cls:1:1: error: the 2 x 2 samples need 4 bytes, and there are 3: the others read as 0\n"},
        {"d.rad", bkg + bytesOf(std::vector<float>{1, 2, 3, -kInfinity, 5}),
         "d.rad:1:1: warning: the header says 2 x 2 samples, and in letters \"3x2\"\n"
         "d.rad:1:1: error: 1 values are not finite, the first in row 2, column 2\n"
         "d.rad:1:1: warning: the 2 x 2 samples need 16 bytes, and there are 20\n"},
        {"a.cls2mat", "1 2\nx\n1 256\n",
         "a.cls2mat:2:1: error: the line holds no two numbers: it repeats those of the line before\n"
         "a.cls2mat:3:1: error: a class and a material are numbers from 0 to 255\n"},
        {"a.temp", "1 2\n3\n",
         "a.temp:1:1: warning: the emissivity is 2: it belongs between 0 and 1\n"
         "a.temp:2:1: error: Malformed line 2: \"3\". Expected 2 floats.\n"},
        {"a.band", "band\n9 8\n",
         "a.band:2:1: error: the edges of the band are 9.000000 and 8.000000: they have to be above 0 and ascend\n"},
        {"a.cls2aster", "# c\n1 grass\n\n2\n1 rock\n",
         "a.cls2aster:4:1: error: the line holds no class number and name of a sample\n"
         "a.cls2aster:5:1: warning: class 1 has a line already, and the first one counts\n"},
        {"a.xml", "<terrain>\n<subs>\n</terrain>\n",
         "a.xml:3:11: error: this is no well-formed XML: Opening and ending tag mismatch: subs line 2 and terrain\n"},
        {"j.brdf", "BRDF\n4\n1.1 0.5 0 1 2 c\n0.6 0.5 0 1 2 c\n0.1 0.1 0.9995 1 2 c\n0.1 0.9 0.998 1 2 c\n1 1 1 f\n",
         "j.brdf:3:1: warning: the class reflects more than it gets: its diffuse reflectance is 1.1\n"
         "j.brdf:4:1: warning: diffuse reflectance and emissivity of the class add up to 1.1, more than 1\n"
         "j.brdf:5:1: warning: b is 0.9995: so near to 1 the normalisation is inexact, at 0.99999 it is off by half\n"},
        {"k.brdf", "BRDF\n1\n0.1 0.5 0 1 2 c\n1 67108865 1 f\n",
         "k.brdf:1:1: error: 67108865 facets are more than can be loaded\n"},
        {"k.rad", radiance(3, -1.0F),
         "k.rad:1:1: warning: 3 radiances are negative, the first that of facet 1\n"
         "k.rad:1:1: warning: 3 emittances are negative, the first that of facet 1\n"},
        {"c.atm", "-1 -2 -3\n-1 -2 -3 -4 -5 -6 -7 -8 30 40\n-1 -2 -3 4\n",
         "c.atm:1:1: warning: the direct solar radiance is negative\n"
         "c.atm:1:1: warning: the diffuse sky's radiance is negative\n"
         "c.atm:1:1: warning: the diffuse earth's radiance is negative\n"},
        {"z.sff-txt", "3\n1 1.5 1 0\n2 1 1.5 1\n1 1.5\n3 1 1 2\n1 0.6\n2 0.6\n",
         "z.sff-txt:1:1: warning: the form factor to the earth of facet 1 is 1.5, more than 1\n"
         "z.sff-txt:1:1: warning: the form factor to the sky of facet 2 is 1.5, more than 1\n"
         "z.sff-txt:1:1: warning: the greatest form factor to another facet of facet 2 is 1.5, more than 1\n"
         "z.sff-txt:1:1: warning: the sum of the form factors to other facets of facet 3 is 1.2, more than 1\n"},
        {"unknown.bin", "x", "unknown.bin:1:1: warning: this is no file that the viewer reads: not checked\n"},
        {"k.rad.gz", "\x1F\x8B",
         "k.rad.gz:1:1: warning: the file is compressed by gzip, which the viewer does not read: not checked\n"},
    };
    for (const auto& [name, contents, expected] : cases) {
        EXPECT_EQ(findings(directory_.write(name, contents)), expected);
        EXPECT_EQ(
            lastRun_.status,
            expected.find(" error: ") == std::string::npos ? ExitStatus::Success : ExitStatus::ProblemsFound)
            << name;
    }
}

TEST_F(CheckFiles, ComparesATerrainSetWithItsFiles) {
    const TerrainFiles files(directory_);
    files.writeRequired();
    files.writeClasses();
    files.writeNormals();
    files.writeAsterRoute();
    const std::string description = files.writeDescription();
    EXPECT_EQ(
        findings(description),
        "set.xml:1:1: warning: \"set.atm\" does not exist: the terrain is drawn without sun\n"
        "set.xml:1:1: warning: its heights reach up to 60, above the threat's start: height 0 is drawn where the "
        "threat is at time 0\n"
        "set.xml:1:1: warning: tile 1 has class 3 in \"set_n0001.cls\", which no table "
        "knows\n");
    EXPECT_EQ(lastRun_.status, ExitStatus::Success);
    findings(description, {"--strict"});
    EXPECT_EQ(lastRun_.status, ExitStatus::ProblemsFound);
}

TEST_F(CheckFiles, TellsOfASpectralSampleWithoutPointsInTheBand) {
    const TerrainFiles files(directory_);
    files.writeRequired();
    files.writeAsterRoute();
    directory_.write("set.band", "band\n8.1 8.4\n");
    EXPECT_EQ(
        findings(files.writeDescription()),
        "set.xml:1:1: warning: its heights reach up to 60, above the threat's start: height 0 is drawn where the "
        "threat is at time 0\n"
        "set.xml:1:1: error: the spectral sample \"aster/grass.txt\" of class 1 has no two points in the band from 8.1 "
        "to 8.4 of \"set.band\": the class reflects nothing\n");
}

TEST_F(CheckFiles, ABodyOfManyFacetsIsNoFault) {
    constexpr int kFacets = 22000;
    std::string lines = "3 22000\n0 1 0 1 0 1\n0 0 0 0 0 1 v\n1 0 0 0 0 1 v\n0 1 0 0 0 1 v\n";
    for (int facet = 0; facet < kFacets; ++facet)
        lines += "1 1 2 3 f\n";
    EXPECT_EQ(findings(directory_.write("many.vnl", lines)), "");
}

TEST_F(CheckFiles, TellsHowATerrainSetAndItsFilesDisagree) {
    const TerrainFiles files(directory_);
    files.writeRequired();
    files.writeAsterRoute();
    const std::string description = files.writeDescription();
    std::filesystem::remove(directory_.file("aster/grass.txt"));
    writeBkg(files.file("set_n0001.cls"), bkgHeader(3, 3), "123123123");
    writeBkg(files.file("set_n0001.rad"), bkgHeader(2, 3), bytesOf(std::vector<float>{1, 2, 3, 4, 5}));
    EXPECT_EQ(
        findings(description),
        "set.xml:1:1: warning: its heights reach up to 60, above the threat's start: height 0 is drawn where the "
        "threat is at time 0\n"
        "set.xml:1:1: error: the spectral sample \"aster/grass.txt\" of class 1 does not exist: no tile with classes "
        "is "
        "drawn\n"
        "set.xml:1:1: error: tile 1 has 3 x 2 posts, but \"set_n0001.rad\" has 2 x 3\n"
        "set.xml:1:1: warning: tile 1 is drawn without sun and materials: \"set_n0001.norm\" does not exist\n"
        "set.xml:1:1: error: tile 1 has 3 x 2 posts, but \"set_n0001.cls\" has 3 x 3\n"
        "set_n0001.rad:1:1: error: the 2 x 3 samples need 24 bytes, and there are 20: the others read as 0\n");
}

TEST_F(CheckFiles, TellsOfNumbersInATerrainSet) {
    const std::string description = directory_.write(
        "set.xml", "<terrain>\n<base>set</base><subs>\n<subterrain n=\"x\">\n<width>3.5</width>\n"
                   "<vec dir=\"x\"><i>-1</i></vec></subterrain>\n</subs></terrain>\n");
    EXPECT_EQ(
        findings(description),
        "set.xml:3:1: error: \"x\" is not an integer\n"
        "set.xml:3:1: error: tile 1 has 3 x 0 posts\n"
        "set.xml:3:1: error: tile 1 has columns that don't run east: it is not drawn\n"
        "set.xml:3:1: error: tile 1 has no topography, \"set_n0000.le-ftop\" does not exist: it is not drawn\n"
        "set.xml:3:1: error: tile 1 has no radiance, \"set_n0000.rad\" does not exist: it is not drawn\n"
        "set.xml:4:1: error: \"3.5\" is not an integer\n");
}

TEST_F(CheckFiles, FollowsATrajectoryToItsModelsOnce) {
    directory_.write("body.vnl", kGeometry);
    directory_.write("body.brdf", "BRDF\n1\n0.5 0.5 0 1 2 c\n1 2 1 f\n");
    directory_.write("sky.rad", radiance(2));
    directory_.write("sky.atm", "1 2\n");
    const std::string trajectory = std::string("t\nt\n") + directory_.file("sky.rad") + "\n1 2 3\n1 2 3\n" +
                                   directory_.file("body.vnl") + "\n" + directory_.file("body.brdf") +
                                   "\n\nred\n1\nid\n2\n0 0 1 2 3 4 5 6\n1 2 3 4 5 6\n0 0 1 2 3\n";
    directory_.write("runs/ETXYZ.OUT.1", trajectory);
    directory_.write("runs/ETXYZ.OUT.2", trajectory);
    directory_.write("runs/notes", "not of the viewer");
    const std::string out = findings(directory_.file("runs"));
    EXPECT_THAT(
        out, HasSubstr("\nsky.atm:1:1: error: Unexpected file format, line 1. Expected 3 floats, but received "
                       "\"1 2\".\n"
                       "body.brdf:1:1: error: the file is of 2 facets, but the geometry \"body.vnl\" is of 1\n"
                       "sky.rad:1:1: error: the file is of 2 facets, but the geometry \"body.vnl\" is of 1\n"
                       "runs/ETXYZ.OUT.2:"));
    EXPECT_EQ(out.find("sky.atm"), out.rfind("sky.atm"));
    EXPECT_THAT(out, testing::Not(HasSubstr("notes")));
}

TEST_F(CheckFiles, ComparesATrajectorysOwnTileWithItsCompanions) {
    GHead topography = torvaleHeader(2, 2, 1);
    topography.xCellSize = topography.yCellSize = 5.0F;
    directory_.write("a.top", bytesOf(topography) + std::string(1024, 'x'));
    directory_.write("a.rad", bytesOf(torvaleHeader(2, 2, 2)) + std::string(1024, '\0'));
    directory_.write("a.cls", bytesOf(torvaleHeader(3, 3, 0)) + std::string(1536, '\1'));
    directory_.write("a.cls2mat", "1 3\n");
    directory_.write("a.temp", "290 0.5\n300 0.5\n");
    directory_.write("a.atm", "");
    const std::string trajectory =
        directory_.file("a.top") + "\n" + directory_.file("a.rad") +
        "\ns\n1 2 3\n1 2 3\ng\nb\n\nred\n1\nid\n2\n0 0 1 2 3 4 5 6\n1 2 3 4 5 6\n0 0 1 2 3\n";
    directory_.write("ETXYZ.OUT.1", trajectory);
    directory_.write("ETXYZ.OUT.2", trajectory);
    const std::string found =
        "a.top:1:1: error: \"a.temp\" does not hold the 3 materials of \"a.cls2mat\"\n"
        "a.top:1:1: warning: tile 1 is drawn without sun and materials: \"a.norm\" does not exist\n"
        "a.top:1:1: error: tile 1 has 2 x 2 posts, but \"a.cls\" has 3 x 3\n"
        "a.atm:1:1: error: Unexpected EOF found when reading line 1.\n";
    const std::string out = findings(directory_.path().string());
    EXPECT_THAT(out, HasSubstr("ETXYZ.OUT.1:11:1:"));
    EXPECT_THAT(out, HasSubstr("ETXYZ.OUT.2:11:1:"));
    const std::size_t first = out.find(found);
    ASSERT_NE(first, std::string::npos) << out;
    EXPECT_EQ(out.find("a.top:1:1", first + found.size()), std::string::npos) << "once";
}

TEST_F(CheckFiles, ChecksAFileOfSeveralNamesOnce) {
    const std::string bad = directory_.write("a.atm", "");
    std::filesystem::create_symlink(bad, directory_.file("b.atm"));
    const CommandRun run = runCommand({"check", bad, directory_.file("./a.atm"), directory_.file("b.atm")});
    EXPECT_EQ(std::ranges::count(run.out, '\n'), 1) << run.out;
}

TEST_F(CheckFiles, ComparesTheSizeOfABkgHeaderInNumbersAndLetters) {
    for (const auto& [letters, isTold] : {std::pair("3x2", false), std::pair("2x3", true), std::pair("any", false)}) {
        BKG_header header = bkgHeader(3, 2);
        std::memcpy(header.dimensions, letters, std::strlen(letters));
        const std::string path = writeBkg(directory_.file("a.cls"), header, "123456");
        EXPECT_EQ(runCommand({"check", path}).out.find("in letters") != std::string::npos, isTold) << letters;
    }
}

TEST_F(CheckFiles, GoesOnAfterAPathThatIsNotThere) {
    const std::string good = directory_.write("a.brdf", kReflectance);
    const std::string bad = directory_.write("a.atm", "");
    const CommandRun run = runCommand({"check", good, directory_.file("none"), bad});
    EXPECT_EQ(run.status, ExitStatus::Failed);
    EXPECT_EQ(
        run.err, std::string("sorvane check: ") + directory_.file("none") +
                     ": there is no such file\n2 files: 1 error, 0 warnings\n");
    EXPECT_EQ(run.out, bad + ":1:1: error: Unexpected EOF found when reading line 1.\n");
}

TEST_F(CheckFiles, TellsTheSameWarningInManyFilesOnce) {
    for (const char* const name : {"a.cls2aster", "b.cls2aster", "c.cls2aster"})
        directory_.write(name, "1 grass\n1 rock\n1 sand\n");
    const std::string folder = directory_.path().string();
    const std::string text = ":1: warning: class 1 has a line already, and the first one counts";
    EXPECT_EQ(findings(folder), "a.cls2aster:2" + text + " (and in 2 more files)\na.cls2aster:3" + text + "\n");
    EXPECT_EQ(lastRun_.err, "3 files: 0 errors, 6 warnings\n");
    EXPECT_EQ(std::ranges::count(findings(folder, {"--all"}), '\n'), 6);
    EXPECT_EQ(nlohmann::json::parse(runCommand({"check", "--json", folder}).out)["findings"].size(), 6U);
}

TEST_F(CheckFiles, CountsAlsoWhenThereIsNothingToCheck) {
    std::filesystem::create_directory(directory_.file("empty"));
    const CommandRun run = runCommand({"check", directory_.file("empty")});
    EXPECT_EQ(run.status, ExitStatus::Failed);
    EXPECT_EQ(run.err, "0 files: 0 errors, 0 warnings\n");
    runCommand({"check", directory_.write("a.brdf", kReflectance)});
    EXPECT_EQ(runCommand({"check", directory_.file("a.brdf")}).err, "1 file: 0 errors, 0 warnings\n");
}

TEST(Check, TellsWhichSizesAMovieCanHave) {
    EXPECT_EQ(runCommand({"check", "--for-movie", "640x480"}).status, ExitStatus::Success);
    const CommandRun run = runCommand({"check", "--for-movie", "645x4"});
    EXPECT_EQ(
        run.out,
        "--for-movie 645x4:1:1: error: the sides of a movie are multiples of 8: not 645x4, but for example 648x8\n");
    EXPECT_EQ(run.status, ExitStatus::ProblemsFound);
    for (const char* const wrong : {"640", "x480", "-8x8", "640x480x3"})
        EXPECT_EQ(runCommand({"check", "--for-movie", wrong}).status, ExitStatus::Failed);
    EXPECT_EQ(runCommand({"check"}).status, ExitStatus::Failed);
}
} // namespace
