// Pictures of the demonstration and of small scenes, held beside references and beside points worked out elsewhere.
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <optional>

#include <gtest/gtest.h>

#include "commandrun.h"
#include "environmentvariable.h"
#include "picturematch.h"
#include "picturerows.h"
#include "smallscenes.h"
#include "specialpictures.h"
#include "temporarydirectory.h"

using namespace sorvane;

namespace {
// In this folder of the build lie the pictures that are not what they should be, each beside its difference.
const std::filesystem::path kFailures = SORVANE_FAILED_PICTURES;

// Whether pictures that don't match become the references. Their points have to hold all the same.
bool accepts() {
    return std::getenv("SORVANE_ACCEPT_PICTURES") != nullptr;
}

void expectLikeReference(const std::string& name, const QImage& actual) {
    const std::string path = pictureFolder() + name + ".png";
    const QImage reference = QImage(QString::fromStdString(path)).convertToFormat(QImage::Format_RGB32);
    const PictureMatch match = matchPictures(actual, reference);
    const std::filesystem::path kept = kFailures / (name + ".png");
    const std::filesystem::path difference = kFailures / (name + ".difference.png");
    std::filesystem::remove(kept);
    std::filesystem::remove(difference);
    if (match.isGood())
        return;
    std::filesystem::create_directories(kFailures);
    EXPECT_TRUE(actual.save(QString::fromStdString(kept.string())));
    if (match.isSameSize)
        differenceOf(actual, reference).save(QString::fromStdString(difference.string()));
    if (accepts() && !testing::Test::HasFailure()) {
        EXPECT_TRUE(actual.save(QString::fromStdString(path)));
        std::cout << "accepted " << name << ": " << match.text() << std::endl;
        return;
    }
    ADD_FAILURE() << match.text() << "\n  reference  " << path << "\n  actual     " << kept.string()
                  << "\n  difference " << difference.string();
}

void expectItsPoints(const std::string& name, const QImage& actual) {
    const std::vector<PicturePoint> points = pointsOf(name);
    EXPECT_GE(points.size(), 3U) << "a reference proves nothing by itself";
    for (const PicturePoint& point : points) {
        const QRgb pixel = actual.pixel(point.x, point.y);
        EXPECT_TRUE(looksLike(actual, point.x, point.y, point.look))
            << point.what << ": " << point.look << " at " << point.x << ", " << point.y << ", not " << qRed(pixel)
            << ' ' << qGreen(pixel) << ' ' << qBlue(pixel);
    }
}

void expectAsItShouldBe(const std::string& name, const QImage& actual) {
    ASSERT_FALSE(actual.isNull());
    expectItsPoints(name, actual);
    expectLikeReference(name, actual);
}

struct SpecialPicture : testing::Test {
    EnvironmentVariable software{"LIBGL_ALWAYS_SOFTWARE", "1"};
    // Made when the tests are built: it takes longer than all the pictures.
    const std::filesystem::path demonstration = SORVANE_DEMONSTRATION;
    EnvironmentVariable dataRoot{"PELSAR_DATA", (demonstration / "data/").string()};
};

// The trajectory in `folder`, its terrain without the description of the set, so that the single rasters are drawn.
std::filesystem::path overSingleRasters(const std::filesystem::path& trajectory, const TemporaryDirectory& folder) {
    const std::string terrain = (trajectory.parent_path() / "data/ter0010").string();
    std::filesystem::copy(terrain, folder.path() / "ter0010");
    std::filesystem::remove(folder.path() / "ter0010/ter0010.xml");
    std::string text = readWholeFile(trajectory);
    for (std::size_t at = text.find(terrain); at != std::string::npos; at = text.find(terrain, at + 1))
        text.replace(at, terrain.size(), (folder.path() / "ter0010").string());
    return folder.write(trajectory.filename().string(), text);
}

struct Picture : SpecialPicture, testing::WithParamInterface<PictureRow> {};

TEST_P(Picture, IsLikeItsReference) {
    const PictureRow& row = GetParam();
    const TemporaryDirectory folder;
    std::filesystem::path trajectory = demonstration / row.trajectory;
    std::optional<EnvironmentVariable> smallData;
    if (row.trajectory.starts_with("scenes/")) {
        trajectory = pictureFolder() + row.trajectory;
        writeSmallSceneData(pictureFolder() + "scenes", folder.path());
        smallData.emplace("PELSAR_DATA", folder.file(""));
    }
    if (row.trajectory.starts_with("single/"))
        trajectory = overSingleRasters(demonstration / trajectory.filename(), folder);
    const std::string made = folder.file("picture.png");
    std::vector<std::string> arguments = {"render",  trajectory.string(), "-o", made, "--size",
                                          "240x180", "--allow-missing"};
    arguments.insert(arguments.end(), row.options.begin(), row.options.end());
    const CommandRun run = runCommand(arguments);
    EXPECT_EQ(run.status, ExitStatus::Success) << run.err;
    expectAsItShouldBe(row.name, QImage(QString::fromStdString(made)).convertToFormat(QImage::Format_RGB32));
}

TEST_F(SpecialPicture, OfAHiddenEngagementIsLikeItsReference) {
    expectAsItShouldBe("hidden", hiddenEngagementPicture(demonstration));
}

TEST_F(SpecialPicture, OfTurningRotorsIsLikeItsReference) {
    expectAsItShouldBe("rotors", rotorPicture(demonstration));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Picture, testing::ValuesIn(pictureRows()),
    [](const testing::TestParamInfo<PictureRow>& row) { return row.param.name; });
} // namespace
