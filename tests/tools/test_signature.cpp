// `sorvane signature`, and `sorvane compare` of bodies.
#include <cmath>
#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <QImage>

#include "commandrun.h"
#include "signaturebodies.h"
#include "trajectorytext.h"

using namespace sorvane;

namespace {
using testing::HasSubstr;
using testing::StartsWith;

// 1 to 6 W/sr ahead, right, behind, left, above and below.
constexpr std::array<float, 6> kSides = {1e-4F, 2e-4F, 3e-4F, 4e-4F, 5e-4F, 6e-4F};
// The sun stands where the numbers of the second line say; W/m²/sr in the third: earth, sky, sun.
constexpr const char* kAtmosphere = "0 0 0\n0 0 0 0 0 0 0 0 130 235\n2 1 4 0\n";

class SignatureCommand : public testing::Test {
protected:
    std::string body(const std::string& name, const std::array<float, 6>& sides = kSides) const {
        return writeBody(folder, name, boxFacets({1.0, 1.0, 1.0}, sides), "0.3 0.6 0.0 0.3 2 diffuse").geometry;
    }
    // Of the box, which turns to the left from 2 s to 3 s.
    std::string trajectoryOf(const char* radiance) const {
        return folder.write(
            "ETXYZ.OUT.1", "/nowhere/t.top\n/nowhere/t.rad\n" + folder.file(radiance) + "\n1 2 3\n4 5 6\n" +
                               folder.file("box.vnl") + "\n" + folder.file("box.brdf") +
                               "\nunused\nwhite\n7\nsomebody\n1.5\n"
                               "2 0 0 0 -1000 0 0 80\n0 0 -500 0 0 0\n0 0 0 0 0\n"
                               "3 0 9 0 -1000 0 0 120\n0 0 -500 0 0 0\n0 0 0 0 0\n");
    }
    static std::vector<std::string> rowsOf(const std::string& table) {
        std::istringstream text(table);
        std::vector<std::string> rows;
        for (std::string row; std::getline(text, row);)
            rows.push_back(row);
        return rows;
    }
    static nlohmann::json jsonOf(const std::vector<std::string>& arguments) {
        const CommandRun run = runCommand(arguments);
        EXPECT_EQ(run.err, "");
        return nlohmann::json::parse(run.out);
    }

    TemporaryDirectory folder;
};

TEST_F(SignatureCommand, WritesARowForEachDirection) {
    const CommandRun run = runCommand({"signature", body("box"), "--step", "45", "-o", folder.file("a.csv")});
    EXPECT_EQ(run.status, ExitStatus::Success) << run.err;
    EXPECT_EQ(run.out, "");
    const std::vector<std::string> rows = rowsOf(readWholeFile(folder.file("a.csv")));
    ASSERT_EQ(rows.size(), 1U + 8U * 5U);
    EXPECT_EQ(
        rows[0], "body,azimuth_deg,elevation_deg,intensity_W_per_sr,own_W_per_sr,sun_W_per_sr,sky_and_earth_W_per_sr,"
                 "other_facets_W_per_sr,projected_area_m2");
    EXPECT_EQ(rows[1], "box.vnl,0,-90,6,6,0,0,0,1");
    EXPECT_EQ(rows[1 + 2 * 8 + 2], "box.vnl,90,0,2,2,0,0,0,1");
    EXPECT_EQ(rows[1 + 2 * 8 + 6], "box.vnl,270,0,4,4,0,0,0,1");
}

TEST_F(SignatureCommand, JsonHoldsRowsOfElevation) {
    const nlohmann::json all = jsonOf({"signature", body("box"), "--step", "45", "--unit", "ft", "--json"});
    EXPECT_EQ(all["layout"], 1);
    EXPECT_EQ(all["azimuth_deg"].size(), 8U);
    EXPECT_EQ(all["elevation_deg"], (nlohmann::json{-90, -45, 0, 45, 90}));
    const nlohmann::json& box = all["bodies"][0];
    EXPECT_EQ(box["facets"], 12);
    EXPECT_EQ(box["sun"], nullptr);
    const double squareFoot = 0.09290304;
    EXPECT_NEAR(box["intensity_W_per_sr"][2][4], 3.0 * squareFoot, 1e-6);
    EXPECT_NEAR(box["projected_area_m2"][4][7], squareFoot, 1e-7);
    EXPECT_EQ(box["own_W_per_sr"].size(), 5U);
    EXPECT_EQ(box["brightest"]["elevation_deg"], -45.0); // sides 4 and 6 and one more at once
}

TEST_F(SignatureCommand, PrintsASummary) {
    const CommandRun run = runCommand({"signature", body("box"), "--step", "90"});
    EXPECT_EQ(run.status, ExitStatus::Success) << run.err;
    EXPECT_THAT(run.out, StartsWith("box.vnl: 12 facets, 4 x 3 directions\n"));
    for (const char* const line : {"nose", "right", "tail", "left", "above", "below", "mean", "greatest, 0 / -90"})
        EXPECT_THAT(run.out, HasSubstr(std::string("\n  ") + line));
}

// From 20 m the side of the box ahead is 19.5 m away and 1 m² large: 4 atan(ab / (2d √(4d² + a² + b²))) sr.
TEST_F(SignatureCommand, FromNearSidesAreTheLarger) {
    const std::string box = body("box");
    const nlohmann::json near = jsonOf({"signature", box, "--step", "90", "--range", "20", "--unit", "m", "--json"});
    EXPECT_EQ(near["range_units"], 20.0);
    EXPECT_FALSE(jsonOf({"signature", box, "--step", "90", "--json"}).contains("range_units"));
    const double apparent = 400.0 * 4.0 * std::atan(1.0 / (39.0 * std::sqrt(1523.0)));
    EXPECT_NEAR(near["bodies"][0]["intensity_W_per_sr"][1][0], apparent, 1e-3);
    EXPECT_NEAR(near["bodies"][0]["intensity_W_per_sr"][1][1], 2.0 * apparent, 2e-3);
    const std::string plot = folder.file("near.svg");
    const CommandRun run = runCommand({"signature", box, "--range", "5", "--step", "45", "-o", plot});
    EXPECT_EQ(run.status, ExitStatus::Success) << run.err;
    EXPECT_THAT(readWholeFile(plot), HasSubstr("apparent intensity from 5 units"));
    EXPECT_THAT(
        runCommand({"signature", box, "--range", "5", "--step", "90"}).out,
        StartsWith("box.vnl: 12 facets, 4 x 3 directions from 5 units\n"));
}

TEST_F(SignatureCommand, DrawsAPolarPlot) {
    const std::string svg = folder.file("a.svg");
    const std::string png = folder.file("a.png");
    const CommandRun run = runCommand(
        {"signature", body("box"), "--step", "30", "-o", svg, "-o", png, "-o", folder.file("a.pdf"), "--size",
         "500x400"});
    EXPECT_EQ(run.status, ExitStatus::Success) << run.err;
    EXPECT_EQ(QImage(QString::fromStdString(png)).size(), QSize(500, 400));
    EXPECT_THAT(readWholeFile(svg), HasSubstr("own emission"));
    EXPECT_THAT(readWholeFile(folder.file("a.pdf")), StartsWith("%PDF"));
}

// At roll, pitch and yaw of 0 the model stands upright in a world whose z points down, lit along the file's direction
// as it is: x forward, y and z changed in sign.
TEST_F(SignatureCommand, TheSunShinesAsInTheViewer) {
    const std::string atmosphere = folder.write("a.atm", kAtmosphere);
    // 180 - 130 degrees from straight up, which in the world is down: cos 235° of the level part north, sin 235° east.
    const double level = std::sin(50.0 * std::numbers::pi / 180.0);
    const double east = level * std::sin(235.0 * std::numbers::pi / 180.0);
    const double north = level * std::cos(235.0 * std::numbers::pi / 180.0);
    const auto lit = [&](const std::string& attitude) {
        return jsonOf(
            {"signature", body("box"), "--step", "90", "--json", "--atm", atmosphere, "--attitude",
             attitude})["bodies"][0];
    };
    const nlohmann::json still = lit("0,0,0");
    const double azimuth = std::atan2(north, east) * 180.0 / std::numbers::pi; // right is the world's y
    EXPECT_NEAR(still["sun"]["azimuth_deg"], azimuth + 360.0, 1e-3);
    EXPECT_NEAR(still["sun"]["elevation_deg"], -40.0, 1e-3);
    EXPECT_NEAR(still["sky_and_earth_W_per_sr"][1][0], 0.4 * 3.0, 1e-4);
    EXPECT_NEAR(still["sun_W_per_sr"][1][2], 0.3 * 4.0 * -east, 1e-4); // the tail faces west
    EXPECT_EQ(still["sun_W_per_sr"][1][0], 0.0);
    const nlohmann::json turned = lit("0,0,90");
    EXPECT_NEAR(turned["sun"]["azimuth_deg"], azimuth + 270.0, 1e-3);
}

// Between two samples, turning to the right: the sun falls back to the left, and a rotor has gone on.
TEST_F(SignatureCommand, ATrajectorysBodyStandsAsAtTheTime) {
    body("box");
    folder.write("box.atm", kAtmosphere);
    const std::string rotors = folder.write("rotors", "1 12  0 0 0  0 0 1  0.5\n"); // to the left
    const std::string trajectory = trajectoryOf("box.rad");
    const auto at = [&](std::vector<std::string> more) {
        more.insert(more.begin(), {"signature", trajectory, "--step", "90", "--json"});
        return jsonOf(more)["bodies"][0];
    };
    const nlohmann::json first = at({});
    const nlohmann::json later = at({"--at-time", "2.5", "--rotors", rotors});
    EXPECT_EQ(first["body"], "ETXYZ.OUT.1 target");
    EXPECT_EQ(first["time_s"], 2.0);
    EXPECT_NEAR(double{first["sun"]["azimuth_deg"]} - double{later["sun"]["azimuth_deg"]}, 20.0, 1e-3);
    EXPECT_EQ(first["sun"]["elevation_deg"], later["sun"]["elevation_deg"]);
    // After one turn and a quarter the nose's side, of 1 W/sr, is on the left.
    EXPECT_NEAR(first["own_W_per_sr"][1][0], 1.0, 1e-5);
    EXPECT_NEAR(later["own_W_per_sr"][1][3], 1.0, 1e-5);
    EXPECT_THAT(
        runCommand({"signature", trajectory, "--at-time", "9"}).err, HasSubstr("ETXYZ.OUT.1: has no samples around"));
}

TEST_F(SignatureCommand, TakesTheFilesBesideABody) {
    const std::string plain = body("box");
    std::filesystem::rename(folder.file("box.rad"), folder.file("box_b0001.rad"));
    EXPECT_EQ(runCommand({"signature", plain, "--step", "90"}).status, ExitStatus::Success);
    std::filesystem::copy(folder.file("box_b0001.rad"), folder.file("box_b0004.rad"));
    std::filesystem::rename(folder.file("box.brdf"), folder.file("box_b0004.brdf"));
    const CommandRun several = runCommand({"signature", plain, "--step", "90"});
    EXPECT_EQ(several.status, ExitStatus::Failed);
    EXPECT_THAT(several.err, HasSubstr("2 radiance files lie beside it"));
    EXPECT_EQ(runCommand({"signature", plain, "--step", "90", "--band", "4"}).err, "");
    EXPECT_EQ(runCommand({"signature", plain, "--step", "90", "--radiance", folder.file("box_b0001.rad")}).err, "");
}

TEST_F(SignatureCommand, SaysWhatIsWrong) {
    const std::string box = body("box");
    const std::string alone = folder.write("alone.vnl", readWholeFile(box));
    const std::string bad = folder.write("bad.vnl", "8 12\n-1 1 -1 1 -1 1\n0 0");
    folder.write("bad.brdf", readWholeFile(folder.file("box.brdf")));
    folder.write("bad.rad", readWholeFile(folder.file("box.rad")));
    const std::string otherRotors = folder.write("rotors", "1 12  0 0 0  0 0 1  1\n5 13  0 0 0  0 0 1  1\n");
    const std::string trajectory = trajectoryOf("none.rad");
    const struct {
        std::vector<std::string> arguments;
        std::string text;
    } rows[] = {
        {{box, "--step", "7"}, "--step is not a part of 90 degrees"},
        {{box, "--range", "0.86"}, "--range is within box.vnl, which reaches 0.866"},
        {{box, "--range", "inf"}, "--range: "},
        {{box, "-o", "a.txt"}, "a.txt: its name ends in none of"},
        {{box, "--size", "7"}, "--size is not WIDTHxHEIGHT: 7"},
        {{box, "--attitude", "1,2"}, "--attitude is not ROLL,PITCH,YAW: 1,2"},
        {{box, "--attitude", "1,2,inf"}, "--attitude is not"},
        {{box, "--atm", folder.file("none.atm")}, "none.atm"},
        {{folder.file("none.vnl")}, "none.vnl: does not exist"},
        {{folder.file("box.brdf")}, "box.brdf: is no geometry file"},
        {{alone}, "alone.vnl: no reflectance file lies beside it; --reflectance or --band says which"},
        {{bad}, "bad.vnl: "},
        {{box, box, "--radiance", "x"}, "--reflectance, --radiance and --rotors are for one body"},
        {{box, box, "--rotors", "x"}, "--reflectance, --radiance and --rotors are for one body"},
        {{box, "--rotors", otherRotors}, "turns facets that the body doesn't have"},
        {{box, "--at-time", "inf"}, "--at-time is a number of seconds"},
        {{box, "--elevation", "nan"}, "--elevation: "},
        {{box, "--body", "threat"}, "--body is for a trajectory"},
        {{trajectory, "--band", "4"}, "--band and --attitude are for a body alone: "},
        {{trajectory, "--attitude", "1,2,3"}, "--band and --attitude are for a body alone: "},
        {{trajectory}, "ETXYZ.OUT.1: a file of the target that it names does not exist"},
    };
    for (const auto& [arguments, text] : rows) {
        std::vector<std::string> all{"signature"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const CommandRun run = runCommand(all);
        EXPECT_EQ(run.status, ExitStatus::Failed) << text;
        EXPECT_THAT(run.err, StartsWith("sorvane signature: "));
        EXPECT_THAT(run.err, HasSubstr(text));
    }
}

TEST_F(SignatureCommand, ComparesBodiesInDecibels) {
    const std::string a = body("a");
    const std::string same = body("same");
    const std::string b = body("b", {1e-4F, 4e-4F, 3e-4F, 4e-4F, 5e-4F, 6e-4F});
    const CommandRun equal = runCommand({"compare", a, same, "--step", "90"});
    EXPECT_EQ(equal.status, ExitStatus::Success) << equal.err;
    EXPECT_THAT(
        equal.out, HasSubstr("equal: 12 directions compared, root mean square 0.00 dB, the most 0.00 dB at azimuth 0"));
    const std::string hardly = body("hardly", {0.9999e-4F, 2e-4F, 3e-4F, 4e-4F, 5e-4F, 6e-4F});
    EXPECT_THAT(
        runCommand({"compare", a, hardly, "--step", "90"}).out,
        HasSubstr(
            "different: 12 directions compared, root mean square 0.00 dB, the most 0.00 dB at azimuth 0, elevation 0"));
    const CommandRun different =
        runCommand({"compare", a, b, "--step", "90", "--tolerance", "3", "--plot", folder.file("d.csv")});
    EXPECT_EQ(different.status, ExitStatus::ProblemsFound);
    EXPECT_THAT(
        different.out, HasSubstr("different: 12 directions compared, root mean square 1.27 dB, "
                                 "the most 3.01 dB at azimuth 90, elevation 0\n"));
    EXPECT_EQ(rowsOf(readWholeFile(folder.file("d.csv"))).at(1 + 4 + 1).substr(0, 15), "90,0,2,4,3.0103");
    EXPECT_EQ(runCommand({"compare", a, b, "--step", "90", "--tolerance", "3.1"}).status, ExitStatus::Success);
    const nlohmann::json json = jsonOf({"compare", a, b, "--step", "90", "--json"});
    EXPECT_EQ(json["kind"], "bodies");
    EXPECT_EQ(json["equal"], false);
    EXPECT_EQ(json["greatest"]["azimuth_deg"], 90.0);
    EXPECT_NEAR(json["difference_dB"][1][1], 3.0103, 1e-4);
    const CommandRun drawn = runCommand({"compare", a, b, "--step", "30", "--plot", folder.file("d.svg")});
    EXPECT_THAT(readWholeFile(folder.file("d.svg")), HasSubstr("elevation 0")) << drawn.err;
    EXPECT_THAT(runCommand({"compare", a, folder.file("a.brdf")}).err, HasSubstr("a.vnl is a body's geometry, "));
    EXPECT_THAT(runCommand({"compare", a, b, "--allowed", "0.1"}).err, HasSubstr("are for pictures"));
}

// Where only one radiates the difference is infinite: a member of JSON without a value.
TEST_F(SignatureCommand, DarkSidesDifferInfinitely) {
    const std::string a = body("a");
    const std::string b = body("b", {1e-4F, 2e-4F, 3e-4F, 4e-4F, 5e-4F, 0.0F});
    const CommandRun run = runCommand({"compare", a, b, "--step", "90", "--tolerance", "100"});
    EXPECT_EQ(run.status, ExitStatus::ProblemsFound);
    EXPECT_THAT(run.out, HasSubstr("only A radiates in 4 directions\n"));
    EXPECT_THAT(run.out, HasSubstr("the most -inf dB at azimuth 0, elevation -90\n"));
    const nlohmann::json json = jsonOf({"compare", a, b, "--step", "90", "--json"});
    EXPECT_EQ(json["greatest"]["difference_dB"], nullptr);
    EXPECT_EQ(json["only_in_a"], 4);
}
} // namespace
