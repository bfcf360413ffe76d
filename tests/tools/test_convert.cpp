// `sorvane convert`.
#include <cmath>
#include <cstdlib>

#include <gmock/gmock.h>

#include "axes.h"
#include "commandrun.h"
#include "engagements.h"
#include "etxyz.h"
#include "fulldisk.h"
#include "matrix.h"
#include "placement.h"
#include "temporarydirectory.h"
#include "timecut.h"
#include "trajectoryfile.h"
#include "trajectorytext.h"
#include "unwrap.h"

using namespace sorvane;

namespace {
using testing::HasSubstr;

TrajectoryFile read(const std::string& path) {
    const sorvane::Outcome<TrajectoryFile> file = readTrajectoryFile(path);
    EXPECT_TRUE(file) << file.problem().text;
    return file ? *file : TrajectoryFile();
}

class ConvertTest : public testing::Test {
protected:
    // A file with these lines after the header.
    std::string file(const std::string& records, const std::string& name = "ETXYZ.OUT.a") const {
        return folder.write(name, trajectoryHeader().toStdString() + records);
    }

    // Runs the command on a file with these records; what it writes after the header.
    std::string converted(const std::string& records, std::vector<std::string> options = {}) {
        options.insert(options.begin(), {"convert", file(records)});
        run = runCommand(options);
        const std::string header = trajectoryHeader().toStdString();
        EXPECT_EQ(run.out.substr(0, header.size()), header);
        return run.out.substr(std::min(run.out.size(), header.size()));
    }

    TemporaryDirectory folder;
    CommandRun run;
};

TEST_F(ConvertTest, TheDemonstrationLoadsBackEqual) {
    for (const sorvane::DemonstrationFile& engagement : sorvane::engagementFiles("/data")) {
        const std::string original = folder.write(engagement.name, engagement.contents);
        const TrajectoryFile before = read(original);
        for (const char* const name : {"plain", "compressed.Z"}) {
            const std::string out = folder.file(name);
            EXPECT_EQ(runCommand({"convert", original, "-o", out}).status, ExitStatus::Success);
            const TrajectoryFile after = read(out);
            EXPECT_EQ(before.samples, after.samples);
            EXPECT_EQ(before.header.targetSignaturePath, after.header.targetSignaturePath);
            EXPECT_EQ(before.header.fieldOfView, after.header.fieldOfView);
        }
        EXPECT_EQ(readWholeFile(folder.file("compressed.Z")).substr(0, 2), "\x1F\x9D");
    }
}

TEST_F(ConvertTest, WritesWhatTheViewerReads) {
    struct Row {
        const char* what;
        std::string records;
        std::string written;
    };
    const Row rows[] = {
        {"shortest numbers, single blanks, words that nothing asks for gone",
         "0.100 0  1.50 2e3\t-0.25  0 0 0 extra\r\n 4 5 6 7.000 8 9\nrange closing 1 2 3\n",
         "0.1 0 1.5 2000 -0.25 0 0 0\n4 5 6 7 8 9\nrange closing 1 2 3\n"},
        {"comments before their records and behind the last one",
         "# a\r\r\r\n0 0 1 2 3 0 0 0\n# b\n4 5 6 0 0 0\n0 0 0 0 0\n#c\n1 0 1 2 3 0 0 0\n4 5 6 0 0 0\n0 0 0 0 0\n# d\n",
         "# a\n# b\n0 0 1 2 3 0 0 0\n4 5 6 0 0 0\n0 0 0 0 0\n#c\n1 0 1 2 3 0 0 0\n4 5 6 0 0 0\n0 0 0 0 0\n# d\n"},
        {"by time, the last of equal ones",
         "2 0 1 0 0 0 0 0\n0 0 0 0 0 0\n0 0 0 0 0\n1 0 2 0 0 0 0 0\n0 0 0 0 0 0\n0 0 0 0 0\n2 0 3 0 0 0 0 0\n0 0 0 0 0 "
         "0\n"
         "0 0 0 0 0\n",
         "1 0 2 0 0 0 0 0\n0 0 0 0 0 0\n0 0 0 0 0\n2 0 3 0 0 0 0 0\n0 0 0 0 0 0\n0 0 0 0 0\n"},
        {"no comment where there was none", "0 0 1 2 3 0 0 0\n4 5 6 0 0 0\n #1 x 1 2 3\n",
         "0 0 1 2 3 0 0 0\n4 5 6 0 0 0\n #1 x 1 2 3\n"},
        {"flares, one with a half axis for all, one with three",
         "0 2 1 2 3 0 0 0\n4 5 6 0 0 0\n0 0 0 0 0\n7 1 1 2 3 2.5e7 0 0 0 5.0 x y 1\n8 2 1 2 3 4 5 6 7 8 9 10 3\n",
         "0 2 1 2 3 0 0 0\n4 5 6 0 0 0\n0 0 0 0 0\n7 1 1 2 3 2.5e+07 0 0 0 5 5 5 1\n8 2 1 2 3 4 5 6 7 8 9 10 3\n"},
        {"all digits of a map's coordinates",
         "0 0 4321012.345678 500123.25 -1.5 0 0 0\n4321012.345679 1 2 0 0 0\n0 0 0 0 0\n",
         "0 0 4321012.345678 500123.25 -1.5 0 0 0\n4321012.345679 1 2 0 0 0\n0 0 0 0 0\n"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(converted(row.records), row.written) << row.what;
        EXPECT_EQ(run.status, ExitStatus::Success) << run.err;
    }
}

TEST_F(ConvertTest, MovesScalesAndTurns) {
    const std::string utm = "0 1 4321012.345 500100 -1200.5 10 20 30\n4321000 500000.125 -300 1 2 3\n9 8 1 2 3\n"
                            "1 1 4321010 500100 -1200 2.5e7 10 20 30 5 5 5 1\n";
    struct Row {
        std::vector<std::string> options;
        std::string written;
    };
    const Row rows[] = {
        {{"--origin", "4321000,500000"},
         "0 1 12.345 100 -1200.5 10 20 30\n0 0.125 -300 1 2 3\n9 8 1 2 3\n1 1 10 100 -1200 2.5e+07 10 20 30 5 5 5 1\n"},
        {{"--origin", "4321000,500000,-300", "--scale", "ft-to-m"},
         "0 1 3.762756 30.48 -274.4724 10 20 30\n0 0.0381 0 1 2 3\n9 8 1 2 3\n"
         "1 1 3.048 30.48 -274.32 2322576 10 20 30 1.524 1.524 1.524 1\n"},
        {{"--origin", "4321000,500000,-300", "--scale", "2", "--axes", "y,x,-z"},
         "0 1 200 24.69 1801 10 -20 60\n0.25 0 0 1 -2 87\n9 8 1 -2 87\n"
         "1 1 200 20 1800 1e+08 10 -20 60 10 10 10 1\n"},
        {{"--origin", "4321000,500000,-300", "--axes", "x,-y,-z", "--heading-of-x", "90"},
         "0 1 12.345 -100 900.5 10 20 -60\n0 -0.125 0 1 2 -87\n9 8 1 2 -87\n"
         "1 1 10 -100 900 2.5e+07 10 20 -60 5 5 5 1\n"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(converted(utm, row.options), row.written) << row.options.back();
}

// The viewer's own matrices tell where a body's nose and top point, before and after.
TEST(Axes, NoseAndTopOfABodyStayWhereTheyWere) {
    const auto rotation = [](const Triple& degrees) {
        const auto angle = [&](std::size_t i) {
            return static_cast<float>(degrees[i]);
        };
        return BuildTransform(1, 1, 1, angle(0), angle(1), angle(2), 0, 0, 0);
    };
    const auto turnedBy = [](const Matrix<float>& matrix, const Triple& v) {
        Triple result{};
        for (int row = 0; row < 3; ++row)
            for (int column = 0; column < 3; ++column)
                result[static_cast<std::size_t>(row)] +=
                    double{matrix(row, column)} * v[static_cast<std::size_t>(column)];
        return result;
    };
    int tried = 0;
    for (const char* const order : {"xyz", "yzx", "zxy", "xzy", "zyx", "yxz"})
        for (int signs = 0; signs < 8; ++signs) {
            std::string text;
            for (int i = 0; i < 3; ++i)
                text += std::string(i > 0 ? "," : "") + ((signs >> i) % 2 == 1 ? "-" : "") + order[i];
            const std::optional<Axes> axes = Axes::parse(text);
            ASSERT_TRUE(axes) << text;
            // Up in the file's axes: what becomes -z.
            Triple up{};
            const auto vertical = static_cast<std::size_t>(order[2] - 'x');
            up[vertical] = signs >= 4 ? 1.0 : -1.0;
            Triple before{};
            for (const Triple& angles :
                 {Triple{0, 0, 0}, Triple{10, 20, 30}, Triple{-50, 80, 200}, Triple{170, -85, -290}, Triple{20, 90, 40},
                  Triple{30, 0, 90}}) {
                before = axes->turnedAttitude(angles, before);
                const Matrix<float> file = rotation(angles);
                const Matrix<float> viewer = rotation(before);
                const Triple nose = axes->turned(turnedBy(file, {1, 0, 0}));
                const Triple top = axes->turned(turnedBy(file, up));
                for (std::size_t i = 0; i < 3; ++i) {
                    EXPECT_NEAR(turnedBy(viewer, {1, 0, 0})[i], nose[i], 1e-5) << text;
                    if (vertical != 0) {
                        EXPECT_NEAR(turnedBy(viewer, {0, 0, -1})[i], top[i], 1e-5) << text;
                    }
                }
                // An ellipsoid may come out in a mirror, its half axes may not change places.
                const Matrix<float> ellipsoid = rotation(axes->turnedEllipsoid(angles, before));
                for (const Triple& halfAxis : {Triple{1, 0, 0}, Triple{0, 1, 0}, Triple{0, 0, 1}}) {
                    const Triple a = turnedBy(ellipsoid, halfAxis);
                    const Triple b = axes->turned(turnedBy(file, halfAxis));
                    EXPECT_NEAR(std::abs(a[0] * b[0] + a[1] * b[1] + a[2] * b[2]), 1.0, 1e-5) << text;
                }
                ++tried;
            }
        }
    EXPECT_EQ(tried, 288);
}

TEST(Axes, AnglesRunOnAcrossFullTurns) {
    const Axes turned = *Axes::parse("y,x,-z");
    EXPECT_EQ(turned.turnedAttitude({725, 10, 400}, {}), (Triple{725, -10, -310}));
    const Axes yUp = *Axes::parse("x,z,-y");
    Triple angles{};
    for (int i = 0; i <= 20; ++i)
        angles = yUp.turnedAttitude({0, 50.0 * i, 0}, angles);
    EXPECT_NEAR(std::abs(angles[2]), 1000.0, 1e-9);
    // Past the vertical a roll of 180 degrees with a pitch below it would mean the same.
    angles = {};
    for (int i = 0; i <= 8; ++i)
        angles = yUp.turnedAttitude({0, 0, 10.0 + 20.0 * i}, angles);
    EXPECT_NEAR(std::abs(angles[1]), 170.0, 1e-9) << angles[0] << ' ' << angles[2];
    for (const char* const text : {"", "x", "x,y", "x,y,y", "x,y,z,", "x,y,w", "--x,y,z", "x y z", "x,y,z,x"})
        EXPECT_FALSE(Axes::parse(text)) << text;
}

TEST_F(ConvertTest, CutsAPieceOutOfALongFlight) {
    QList<TestSample> samples;
    for (int i = 0; i <= 170; ++i) {
        TestSample sample{
            .time = double(i), .target = {200.0 * i, 3.0 * i * i, -1000.0}, .threat = {250.0 * i, 0, -2.0 * i}};
        if (i >= 70 && i < 75)
            sample.flares = {{.id = 4, .x = 10.0 * i, .scalar = 1e6, .radius = 1.0 + i}};
        samples.append(sample);
    }
    const std::string original = folder.file("ETXYZ.OUT.long");
    writeTrajectory(QString::fromStdString(original), samples);
    const std::string cut = folder.file("ETXYZ.OUT.cut");
    run = runCommand({"convert", original, "-o", cut, "--from", "60.25", "--to", "90.125"});
    EXPECT_EQ(run.status, ExitStatus::Success);
    EXPECT_EQ(
        run.err,
        "sorvane convert: note: the viewer draws the terrain's height 0 where the threat is at time 0, which is "
        "now at z = -120.5 of the file instead of 0\n");

    etxyz before;
    before.LoadETXYZ(QString::fromStdString(original));
    etxyz after;
    after.LoadETXYZ(QString::fromStdString(cut));
    EXPECT_EQ(after.keyframes.size(), 32);
    EXPECT_EQ(after.keyframes.firstKey(), 0.0);
    EXPECT_EQ(after.keyframes.lastKey(), 29.875);
    for (const double t : {0.0, 0.5, 0.75, 9.75, 12.1, 14.75, 29.75, 29.8, 29.875}) {
        const keyframe a = before.InterpolatedFrame(t + 60.25);
        const keyframe b = after.InterpolatedFrame(t);
        EXPECT_EQ(a.flares.size(), b.flares.size()) << t;
        for (int axis = 0; axis < 3; ++axis) {
            EXPECT_NEAR(a.targetPos[axis], b.targetPos[axis], 0.002) << t;
            EXPECT_NEAR(a.threatPos[axis], b.threatPos[axis], 0.002) << t;
        }
        if (!a.flares.isEmpty()) {
            EXPECT_NEAR(a.flares[0].intensity[2], b.flares[0].intensity[2], 1e-4);
        }
    }
    run = runCommand({"convert", original, "--from", "171"});
    EXPECT_EQ(run.status, ExitStatus::Failed);
    EXPECT_EQ(run.err, "sorvane convert: " + original + ": has no samples between --from and --to\n");
}

TEST(TimeCut, EndsOnSamplesAndBetweenThem) {
    std::vector<ExactSample> samples(3);
    for (std::size_t i = 0; i < 3; ++i) {
        samples[i].time = 10.0 + double(i);
        samples[i].flares = {{.id = 1, .halfAxes = {1, 1, 1}, .bandCount = 1}};
    }
    samples[2].flares.insert(samples[2].flares.begin(), {.id = 1, .halfAxes = {9, 9, 9}});
    samples[2].flares[1].halfAxes = {3, 2, 1};
    samples[2].comments = "# 12\n";
    using Times = std::vector<double>;
    struct Row {
        std::optional<double> from;
        std::optional<double> to;
        Times times;
    };
    for (const Row& row :
         {Row{{}, {}, Times{10, 11, 12}}, Row{{}, 11.5, Times{10, 11, 11.5}}, Row{11.0, {}, Times{0, 1}},
          Row{10.25, 10.75, Times{0, 0.5}}, Row{-5.0, 11.0, Times{0, 1}}, Row{11.5, 11.5, Times{0}},
          Row{12.0, 99.0, Times{0}}, Row{13.0, {}, Times{}}, Row{{}, 9.0, Times{}}}) {
        Times times;
        for (const ExactSample& sample : timeCut(samples, row.from, row.to))
            times.push_back(sample.time);
        EXPECT_EQ(times, row.times);
    }
    const ExactSample middle = timeCut(samples, 11.5, {}).front();
    EXPECT_EQ(middle.flares[0].halfAxes, (Triple{2, 1.5, 1}));
    EXPECT_EQ(middle.comments, "");
}

TEST_F(ConvertTest, UnwrapsAngles) {
    std::string records;
    std::string written;
    const char* const angles[][2] = {
        {"170", "170"}, {"-175.3", "184.7"}, {"170", "170"}, {"-10", "-10"}, {"171", "-189"}};
    for (int i = 0; i < 5; ++i)
        for (const auto& [text, angle] : {std::pair{&records, angles[i][0]}, {&written, angles[i][1]}})
            *text += std::to_string(i) + " 1 0 0 0 " + angle + " 0 0\n0 0 0 0 " + angle + " 0\n0 0 0 0 " + angle +
                     "\n1 0 0 0 0 1 " + angle + " 0 0 1 1 1 1\n";
    EXPECT_EQ(converted(records, {"--unwrap-angles"}), written);
    EXPECT_EQ(converted(records), records);
}

TEST_F(ConvertTest, TellsOfWhatLookedBrokenAndNowLooksSound) {
    const std::string record = "0 0 1 2 3 0 0 0\n4 5 6 0 0 0\n0 0 0 0 0\n";
    struct Row {
        std::string records;
        std::string complaint;
    };
    const std::string name = folder.file("ETXYZ.OUT.a");
    const Row rows[] = {
        {"# comment\n0 0 x 2\n4 5 6 0 0 0\n0 0 0 0 0\n",
         ":14: 5 numbers from here on can't be read or are missing, and were written as 0; see sorvane check"},
        {record + "1 0 1 2 3 0 0 0\n", ": the data end within a record; what it lacks was written as 0"},
        {record + "\n" + record, ": a blank line ends the data, and 3 lines behind it were not read"},
    };
    for (const Row& row : rows) {
        converted(row.records);
        EXPECT_EQ(run.status, ExitStatus::ProblemsFound);
        EXPECT_EQ(run.err, "sorvane convert: " + name + row.complaint + "\n");
    }
}

TEST_F(ConvertTest, SaysWhatIsWrongAndLeavesNoFile) {
    const std::string a = file("0 0 1e30 2 3 0 0 0\n4 5 6 0 0 0\n0 0 0 0 0\n");
    const std::string geometry = folder.write("a.vnl", "2 2\n");
    const std::string damaged = folder.write("damaged.Z", "\x1f\x9d\x90nonsense");
    struct Row {
        std::vector<std::string> arguments;
        std::string message;
    };
    const Row rows[] = {
        {{folder.file("missing")}, folder.file("missing") + ": there is no such file"},
        {{geometry}, geometry + ": is no trajectory"},
        {{damaged}, damaged + ": its compressed data are damaged or cut short"},
        {{folder.write("ETXYZ.OUT.empty", "")}, folder.file("ETXYZ.OUT.empty") + ": holds no samples"},
        {{a, "--from", "2", "--to", "1"}, "--from is later than --to"},
        {{a, "--to", "nan"}, "--to is no finite number"},
        {{a, "--origin", "1"}, "--origin is not X,Y or X,Y,Z: 1"},
        {{a, "--origin", "1,b"}, "--origin is not X,Y or X,Y,Z: 1,b"},
        {{a, "--scale", "0"}, "--scale is neither ft-to-m nor m-to-ft nor a number above 0: 0"},
        {{a, "--scale", "feet"}, "--scale is neither ft-to-m nor m-to-ft nor a number above 0: feet"},
        {{a, "--axes", "x,y,y"}, "--axes does not name each of x, y and z once, as in x,-y,-z: x,y,y"},
        {{a, "--scale", "1e9"}, a + ": its numbers become too large"},
        {{a, "-o", folder.file("no/a")}, folder.file("no/a") + ": No such file or directory"},
    };
    for (const Row& row : rows) {
        std::vector<std::string> arguments{"convert"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        run = runCommand(arguments);
        EXPECT_EQ(run.status, ExitStatus::Failed);
        EXPECT_EQ(run.err, "sorvane convert: " + row.message + "\n");
        EXPECT_EQ(run.out, "");
    }
    const std::string kept = folder.write("kept", "before");
    {
        const FullDisk full(100);
        run = runCommand({"convert", a, "-o", kept});
    }
    EXPECT_EQ(run.err, "sorvane convert: " + kept + ": could not be written\n");
    EXPECT_EQ(readWholeFile(kept), "before");
}

TEST_F(ConvertTest, WorksInPipesAndOverItsOwnInput) {
    const std::string a = file("0 0 1 2 3 0 0 0\n4 5 6 0 0 0\n0 0 0 0 0\n");
    const std::string command = "'" SORVANE_COMMAND "' convert ";
    const std::string twice = folder.file("twice");
    EXPECT_EQ(
        std::system((command + "--scale 2 - <'" + a + "' | " + command + "- --scale 4 >'" + twice + "'").c_str()), 0);
    EXPECT_EQ(runCommand({"convert", a, "-o", a, "--scale", "8"}).status, ExitStatus::Success);
    EXPECT_EQ(readWholeFile(twice), readWholeFile(a));
    EXPECT_THAT(readWholeFile(a), HasSubstr("\n0 0 8 16 24 0 0 0\n32 40 48 0 0 0\n"));
}
} // namespace
