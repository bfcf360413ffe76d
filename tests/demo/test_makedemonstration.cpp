// Making the demonstration data: what is written where, again and again the same.
#include <chrono>
#include <filesystem>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "atmfile.h"
#include "datatree.h"
#include "decimalcommalocale.h"
#include "makedemonstration.h"
#include "temporarydirectory.h"

using namespace sorvane;

namespace {
// Every file below `directory` by its relative name.
std::map<std::string, std::string> filesBelow(const std::filesystem::path& directory) {
    std::map<std::string, std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory))
        if (entry.is_regular_file())
            files[entry.path().lexically_relative(directory).string()] = readWholeFile(entry.path());
    return files;
}
} // namespace

TEST(MakeDemonstration, WritesTheSameBytesAgainAndReplacesOnlyWhatDiffers) {
    const TemporaryDirectory directory;
    const std::filesystem::path demo = directory.path() / "new folder" / "demo";
    EXPECT_EQ(makeDemonstration(demo), std::nullopt);
    const auto first = filesBelow(demo);
    for (const char* const name : {"ETXYZ.OUT.vague", "ETXYZ.OUT.veer", "ETXYZ.OUT.weave.Z"})
        EXPECT_TRUE(first.contains(name)) << name;
    EXPECT_EQ(first.begin()->first, "ETXYZ.OUT.turn") << "what is opened first";

    const auto longAgo = std::filesystem::file_time_type::clock::now() - std::chrono::hours(24);
    std::filesystem::last_write_time(demo / "ETXYZ.OUT.turn", longAgo);
    directory.write("new folder/demo/ETXYZ.OUT.vague", "cut off");
    std::filesystem::remove(demo / "ETXYZ.OUT.weave.Z");
    EXPECT_EQ(makeDemonstration(demo), std::nullopt);
    EXPECT_TRUE(filesBelow(demo) == first);
    EXPECT_EQ(std::filesystem::last_write_time(demo / "ETXYZ.OUT.turn"), longAgo);

    const DecimalCommaLocale locale;
    std::filesystem::remove_all(demo);
    EXPECT_EQ(makeDemonstration(demo), std::nullopt);
    EXPECT_TRUE(filesBelow(demo) == first) << "in a locale with a decimal comma";
}

TEST(MakeDemonstration, NamesItsPlaceInFullOrThePlaceThatTheTreeIsMeantFor) {
    const TemporaryDirectory directory;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(directory.path());
    EXPECT_EQ(makeDemonstration("demo/"), std::nullopt);
    std::filesystem::current_path(before);
    const std::filesystem::path demo = directory.path() / "demo";
    const auto root = [&] {
        const std::string text = readWholeFile(demo / "ETXYZ.OUT.turn");
        return text.substr(0, text.find(kTerrainTopography));
    };
    EXPECT_EQ(root(), std::filesystem::canonical(demo).string() + "/data/");
    ASSERT_EQ(makeDemonstration(demo, "/else where/data/"), std::nullopt);
    EXPECT_EQ(root(), "/else where/data/");
    for (const auto& [name, contents] : filesBelow(demo))
        EXPECT_EQ(contents.find(directory.path().string()), std::string::npos) << name;
    EXPECT_EQ(
        makeDemonstration(directory.path(), "/else  where"),
        "the path /else  where has white space that trajectory files can not hold");
}

TEST(MakeDemonstration, BringsTheShadersAndAnAtmosphereThatLightsBodiesFromAbove) {
    const TemporaryDirectory directory;
    ASSERT_EQ(makeDemonstration(directory.path()), std::nullopt);
    EXPECT_TRUE(filesBelow(directory.path() / "data/openglshaders") == filesBelow(SORVANE_SHADERS));
    AtmFile atm;
    EXPECT_TRUE(atm.Load(directory.file(std::string("data/") + kAtmosphere)));
    EXPECT_EQ(atm.solarZenith(), 130.0F);
    EXPECT_EQ(atm.solarAzimuth(), 235.0F);
    EXPECT_FLOAT_EQ(atm.diffuseEarthRadiance(), 1.9e-4F);
    EXPECT_FLOAT_EQ(atm.diffuseSkyRadiance(), 0.65e-4F);
    EXPECT_FLOAT_EQ(atm.directSolarRadiance(), 1.7e-4F);
}

TEST(MakeDemonstration, SaysWhatIsInTheWay) {
    const TemporaryDirectory directory;
    directory.write("file", "");
    const std::string blocked = directory.file("file/demo");
    EXPECT_EQ(makeDemonstration(blocked), "can not make the directory " + blocked + ": Not a directory");

    const std::filesystem::path root = std::filesystem::canonical(directory.path());
    const std::filesystem::path twoBlanks = root / "two  blanks";
    EXPECT_EQ(
        makeDemonstration(twoBlanks),
        "the path " + twoBlanks.string() + " has white space that trajectory files can not hold");
    EXPECT_TRUE(std::filesystem::is_empty(twoBlanks));

    const std::filesystem::path demo = root / "demo";
    std::filesystem::create_directories(demo / "ETXYZ.OUT.turn");
    EXPECT_EQ(makeDemonstration(demo), "can not write " + (demo / "ETXYZ.OUT.turn").string() + ": Is a directory");
    EXPECT_FALSE(std::filesystem::exists(demo / ".ETXYZ.OUT.turn.new"));
}
