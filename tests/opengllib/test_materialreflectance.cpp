// Material reflectance: spectral samples, band files, class tables, their caches and messages.
#include <cmath>
#include <vector>

#include <gmock/gmock.h>

#include "asterfiles.h"
#include "bandfile.h"
#include "capturedoutput.h"
#include "cls2asterfile.h"
#include "decimalcommalocale.h"
#include "rows.h"
#include "temporarydirectory.h"

using namespace sorvane;

namespace {
std::string asterError(const std::string& message) {
    return errorLine("readFile", "opengllib/aster.cpp", message);
}
std::string bandError(const std::string& function, const std::string& path) {
    return errorLine(function, "opengllib/bandfile.cpp", "File \"" + path + "\" does not exist.");
}
std::string notFound(const std::string& path) {
    return "File " + path + " was not found.\n";
}
} // namespace

TEST(AsterMean, IsTheTrapezoidalMeanOfThePointsInsideTheBand) {
    const DecimalCommaLocale locale;
    for (const auto& [points, lambda1, lambda2, mean] :
         Rows<std::string, float, float, float>{// Nothing is interpolated at the edges.
                                                {kRisingPoints, 7.5F, 9.9F, 0.4F},
                                                {kFallingPoints, 8, 9, 0.4F},
                                                {kRisingPoints, 8, 8.6F, 0.3F},
                                                // (15 + 15 + 25 + 70) / 3
                                                {kRisingPoints, 1, 100, 125.0F / 300.0F},
                                                {kFallingPoints, 1, 100, 125.0F / 300.0F},
                                                // The first of several points at the first wavelength counts.
                                                {"7 10\n7 90\n8 20\n", 5, 8, 0.15F},
                                                // Later ones do not widen the band.
                                                {"7 10\n8 20\n8 30\n9 40\n", 7, 9, 0.25F},
                                                // A line without numbers repeats the point before it.
                                                {"7 10\nwords\n\n8 20\n", 5, 8, 0.15F}})
        EXPECT_FLOAT_EQ(Aster::bandMean(asterText(points), lambda1, lambda2), mean) << points;
}

TEST(AsterMean, OfNoPointsIsNotANumber) {
    for (const auto& [points, lambda1, lambda2] : Rows<std::string, float, float>{
             {kFallingPoints, 8.1F, 8.4F},
             {kRisingPoints, 20, 30},
             {"8 10\n8 10\n", 7, 9},
             {"", 7, 9},
             {"nan nan\n8 10\n9 10\n", 7, 9}})
        EXPECT_TRUE(std::isnan(Aster::bandMean(asterText(points), lambda1, lambda2))) << points;
    EXPECT_TRUE(std::isnan(Aster::bandMean("a file of one line", 7, 9)));
}

TEST(Aster, WithoutAFileIsAlpha) {
    const TemporaryDirectory directory;
    const std::string missing = directory.file("missing.txt");
    EXPECT_EQ(outputOf([&] { EXPECT_TRUE(Aster(missing, 8, 9).isAlpha()); }), notFound(missing));
    const Aster alpha;
    EXPECT_EQ(alpha.name(), "aster::alpha");
    EXPECT_EQ(alpha.getReflectance(), -1.0F);
    EXPECT_EQ(alpha.getEmissivity(), -1.0F);
    EXPECT_EQ(outputOf([&] { alpha.print(); }), "refl: -1.000000:\taster::alpha\n");
    Aster unreadable;
    EXPECT_EQ(
        outputOf([&] { EXPECT_FALSE(unreadable.readFile(8, 9)); }),
        asterError("Could not open file \"aster::alpha\" for reading."));
}

TEST(Aster, IsReadOnceForEachBand) {
    const TemporaryDirectory directory;
    const std::string path = directory.write("grass.txt", asterText(kRisingPoints));
    Aster::asterdata entry;
    EXPECT_FALSE(Aster::hasBeenLoaded(path, 8, 9, entry));
    EXPECT_EQ(entry.reflectance, -1.0F);
    EXPECT_FLOAT_EQ(Aster(path, 8, 9).getEmissivity(), 0.6F);
    EXPECT_TRUE(Aster::hasBeenLoaded(path, 8, 9, entry));
    directory.write("grass.txt", "gone");
    EXPECT_FLOAT_EQ(Aster(path, 8, 9).getReflectance(), 0.4F);
    const Aster other(path, 8, std::nextafter(9.0F, 10.0F));
    EXPECT_TRUE(std::isnan(other.getReflectance())) << "another band reads the file";
    EXPECT_TRUE(std::isnan(other.getEmissivity()));
    EXPECT_FALSE(other.isAlpha());
}

TEST(BandFile, GivesTheEdges) {
    const DecimalCommaLocale locale;
    for (const auto& [text, expected1, expected2] : Rows<std::string, float, float>{
             {"1 2\n\n 8.5\n\n9.25", 8.5F, 9.25F},
             {"\n8.5 x", 8.5F, 0},
             {"8 9", 0, 0},
             // A first line of more than 255 characters goes on as the numbers.
             {std::string(255, 'x') + "8 9\n10 11\n", 8, 9}}) {
        float lambda1 = 1;
        float lambda2 = 1;
        BandFile::parse(text, lambda1, lambda2);
        EXPECT_EQ(lambda1, expected1) << text;
        EXPECT_EQ(lambda2, expected2) << text;
    }
}

TEST(BandFile, RemembersEveryFile) {
    const TemporaryDirectory directory;
    BandFile bands;
    float lambda1 = 0;
    float lambda2 = 0;
    const std::string path = directory.write("a.band", "text\n3 5\n");
    EXPECT_TRUE(bands.GetLambda(path, lambda1, lambda2));
    directory.write("a.band", "text\n1 2\n");
    EXPECT_EQ(outputOf([&] { EXPECT_TRUE(bands.GetLambda(path, lambda1, lambda2)); }), "");
    EXPECT_EQ(lambda1 * 10 + lambda2, 35.0F);

    const std::string missing = directory.file("missing.band");
    EXPECT_EQ(
        outputOf([&] { EXPECT_FALSE(bands.GetLambda(missing, lambda1, lambda2)); }),
        bandError("readFile", missing) + notFound(missing));
    EXPECT_EQ(lambda1, -1.0F);
    EXPECT_EQ(lambda2, -1.0F);
    EXPECT_EQ(
        outputOf([&] { EXPECT_FALSE(bands.GetLambda(missing, lambda1, lambda2)); }),
        bandError("seenBefore", missing) + bandError("readFile", missing) + notFound(missing));
}

TEST(ClassToAster, LinesAreAClassAndASample) {
    const auto entries = Cls2AsterFile::parse("# comment\n\r\n\n1 grass more\n-2\taster::alpha\r\nwords\n3");
    ASSERT_EQ(entries.size(), 4U);
    EXPECT_EQ(entries[0].cls, 1);
    EXPECT_EQ(entries[0].sample, "grass");
    EXPECT_EQ(entries[1].cls, -2);
    EXPECT_EQ(entries[1].sample, "aster::alpha");
    EXPECT_EQ(entries[2].sample, "");
    EXPECT_EQ(entries[3].cls, 3);
}

TEST(ClassToAster, GivesTheReflectanceOfAClass) {
    const TemporaryDirectory directory;
    directory.write("aster/grass.txt", asterText(kRisingPoints));
    const std::string path = directory.write("a.cls2aster", "# table\n7 grass\n200 aster::alpha\n7 aster::alpha\n");
    for (const std::string& folder : {directory.file("aster"), directory.file("aster/")}) {
        Cls2AsterFile table;
        const float lambda2 = folder.ends_with('/') ? 9.0F : 9.5F;
        EXPECT_EQ(outputOf([&] { EXPECT_TRUE(table.load(path, folder, 8, lambda2)); }), "");
        EXPECT_EQ(table.count(), 3);
        EXPECT_EQ(table.path(), path);
        EXPECT_TRUE(table.countClasses());
        EXPECT_FLOAT_EQ(table.getAsterByClass(7).getReflectance(), 0.4F) << "the first entry counts";
        EXPECT_TRUE(table.getAsterByClass(200).isAlpha());
        EXPECT_EQ(
            outputOf([&] { EXPECT_TRUE(table.getAsterByClass(8).isAlpha()); }),
            errorLine("getIndexByClass", "opengllib/cls2asterfile.cpp", "Could not find class 8.") +
                errorLine("getAsterByClass", "opengllib/cls2asterfile.cpp", "Received negative index -1."));
    }
    std::filesystem::remove(path);
    Cls2AsterFile table; // from memory
    ASSERT_TRUE(table.load(path, directory.file("aster/"), 8, 9));
    EXPECT_FALSE(table.InCache(path, 8, 10)) << "in another band";
    EXPECT_EQ(
        outputOf([&] { table.print(); }), "7: refl: 0.400000:\t" + directory.file("aster/grass.txt") +
                                              "\n200: refl: -1.000000:\taster::alpha\n"
                                              "7: refl: -1.000000:\taster::alpha\n");
}

TEST(ClassToAster, FailsAsAWhole) {
    const TemporaryDirectory directory;
    directory.write("grass.txt", asterText(kRisingPoints));
    const std::string folder = directory.path().string();
    const std::string path = directory.write("a.cls2aster", "7 grass\n8 rock\n");
    Cls2AsterFile table;
    EXPECT_EQ(outputOf([&] { EXPECT_FALSE(table.load(path, folder, 8, 9)); }), notFound(folder + "/rock.txt"));
    EXPECT_EQ(table.count(), 0);
    EXPECT_FALSE(table.InCache(path, 8, 9));
    const std::string missing = directory.file("missing.cls2aster");
    EXPECT_EQ(outputOf([&] { EXPECT_FALSE(table.load(missing, folder, 8, 9)); }), notFound(missing));
    EXPECT_FALSE(table.countClasses());
    EXPECT_THAT(
        outputOf([&] { EXPECT_FALSE(table.load(path, "", 8, 9)); }),
        testing::MatchesRegex("opengllib/cls2asterfile.cpp:[0-9]+: no aster directory\n"));
}
