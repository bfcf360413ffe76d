// The atmosphere file: values, messages, the cache and the direction of the sun.
#include <clocale>
#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "atmfile.h"
#include "decimalcommalocale.h"
#include "errorline.h"
#include "temporarydirectory.h"

using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

namespace {
const std::string kGood = "1.0 2.0 3.0\n"
                          "1 2 3.5 4 5 6.5 7.5 8.5 130 225\n"
                          "1.9 0.65 5.4 -12.5\n";

std::string withSun(float ninth, float tenth) {
    char line[100];
    std::snprintf(line, sizeof line, "1 2 3\n1 2 3 4 5 6 7 8 %g %g\n1 2 3 4\n", double{ninth}, double{tenth});
    return line;
}

void expectAllZero(const AtmFile& atm) {
    EXPECT_EQ(atm.solarZenith(), 0.0F);
    EXPECT_EQ(atm.solarAzimuth(), 0.0F);
    EXPECT_EQ(atm.diffuseEarthRadiance(), 0.0F);
    EXPECT_EQ(atm.diffuseSkyRadiance(), 0.0F);
    EXPECT_EQ(atm.directSolarRadiance(), 0.0F);
    EXPECT_EQ(atm.signatureBearing(), 0.0F);
}

void expectGoodValues(const AtmFile& atm) {
    EXPECT_EQ(atm.solarZenith(), 50.0F);
    EXPECT_EQ(atm.solarAzimuth(), 225.0F);
    EXPECT_EQ(atm.diffuseEarthRadiance(), 0.000189999992F);
    EXPECT_EQ(atm.diffuseSkyRadiance(), 6.49999929e-05F);
    EXPECT_EQ(atm.directSolarRadiance(), 0.000539999979F);
    EXPECT_EQ(atm.signatureBearing(), -12.5F);
}

// What Load leaves on standard error, source lines left out.
std::string messageOfLoad(AtmFile& atm, const std::string& name, bool result) {
    CaptureStderr();
    EXPECT_EQ(atm.Load(name), result) << name;
    return withoutSourceLines(GetCapturedStderr());
}

std::string loadError(const std::string& message) {
    return errorLine("Load", "opengllib/atmfile.cpp", message);
}
} // namespace

TEST(AtmFile, LoadsTheSixValues) {
    const TemporaryDirectory directory;
    const std::string name = directory.write("good.atm", kGood);
    AtmFile atm;
    EXPECT_EQ(messageOfLoad(atm, name, true), "");
    expectGoodValues(atm);
    EXPECT_EQ(atm.fileName(), name);
    EXPECT_EQ(atm.Name(), name);
}

TEST(AtmFile, TakesWhateverTheScanFormatsTake) {
    AtmFile atm;
    CaptureStderr();
    EXPECT_TRUE(atm.parse("\t1e0 0x10 .5 more\r\n 1 2 3.9 +4 -5 6 7 8 1e2 0x1p4 eleven\r\n10000 1. -2 nan"));
    EXPECT_EQ(GetCapturedStderr(), "");
    EXPECT_EQ(atm.solarZenith(), 80.0F);
    EXPECT_EQ(atm.solarAzimuth(), 16.0F);
    EXPECT_EQ(atm.diffuseEarthRadiance(), 1.0F);
    EXPECT_EQ(atm.diffuseSkyRadiance(), 0.0001F);
    EXPECT_EQ(atm.directSolarRadiance(), -0.0002F);
    EXPECT_NE(atm.signatureBearing(), atm.signatureBearing());
}

TEST(AtmFile, ReportsWhatIsWrongWithItsTextOnce) {
    const std::string one = "1 2 3\n";
    const std::string two = "1 2 3 4 5 6 7 8 9 10\n";
    const std::string blanks(254, ' ');
    const std::string lineOne = "Unexpected file format, line 1. Expected 3 floats, but received \"";
    const std::string lineTwo = "Unexpected file format, line 2. Received \"";
    const std::string lineThree = "Unexpected file format, line 3. Expected 4 floats, but received \"";
    struct Row {
        std::string text;
        std::string message;
    };
    const Row rows[] = {
        {"", "Unexpected EOF found when reading line 1."},
        {one, "Unexpected EOF found when reading line 2."},
        {one + two, "Unexpected EOF found when reading line 3."},
        {"one two three\n" + two, lineOne + "one two three\n\"."},
        {"1 2", lineOne + "1 2\"."},
        {"1 2 %d", lineOne + "1 2 %d\"."},
        {"\n" + one + two, lineOne + "\n\"."},
        {std::string("1 2\0 3\n", 7) + two, lineOne + "1 2\"."},
        {std::string("\0", 1), lineOne + "\"."},
        {one + "1 2 3 4 5 6 7 8 9\n", lineTwo + "1 2 3 4 5 6 7 8 9\n\"."},
        {one + "1 2 3 4.5 5 6 7 8 9 10\n", lineTwo + "1 2 3 4.5 5 6 7 8 9 10\n\"."},
        {one + "1 2 3 4 5 6 7 8 9 x\n", lineTwo + "1 2 3 4 5 6 7 8 9 x\n\"."},
        {one + two + "1 2 3\n4\n", lineThree + "1 2 3\n\"."},
        {one + two + "1 2 3 ", lineThree + "1 2 3 \"."},
        // A line longer than the buffer goes on as the next line.
        {"1 2 3" + blanks + "rest\n" + two + "1 2 3 4\n", lineTwo + "    rest\n\"."},
        {"1 2 " + blanks + "3\n" + two, lineOne + "1 2 " + blanks.substr(0, 251) + "\"."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        AtmFile atm;
        CaptureStderr();
        EXPECT_FALSE(atm.parse(row.text));
        EXPECT_EQ(withoutSourceLines(GetCapturedStderr()), loadError(row.message));
        expectAllZero(atm);
    }
}

TEST(AtmFile, ReadsALongLineAsTwo) {
    AtmFile atm;
    EXPECT_TRUE(atm.parse("1 2 3" + std::string(250, ' ') + "1 2 3 4 5 6 7 8 90 10\n1 2 3 4\n"));
    EXPECT_EQ(atm.solarZenith(), 90.0F);
    EXPECT_EQ(atm.solarAzimuth(), 10.0F);
}

TEST(AtmFile, ReportsAFileThatCanNotBeOpened) {
    const TemporaryDirectory directory;
    for (const std::string& name : {directory.file("missing.atm"), directory.path().string(), std::string()}) {
        AtmFile atm;
        EXPECT_EQ(messageOfLoad(atm, name, false), loadError("Unable to open file \"" + name + "\" for reading."));
        expectAllZero(atm);
        EXPECT_EQ(atm.fileName(), name);
    }
}

TEST(AtmFile, IsReadAtItsBeginningHoweverLongItIs) {
    const TemporaryDirectory directory;
    const std::string name = directory.write("long.atm", kGood);
    std::filesystem::resize_file(name, std::uintmax_t{1} << 33); // sparse
    AtmFile atm;
    EXPECT_EQ(messageOfLoad(atm, name, true), "");
    expectGoodValues(atm);
}

TEST(AtmFileCache, AnswersForAFileThatWasLoadedBefore) {
    const TemporaryDirectory directory;
    const std::string name = directory.write("cached.atm", kGood);
    AtmFile first;
    EXPECT_FALSE(first.InCache());
    EXPECT_EQ(messageOfLoad(first, name, true), "");
    EXPECT_TRUE(first.InCache());
    std::filesystem::remove(name);

    AtmFile second;
    EXPECT_EQ(messageOfLoad(second, name, true), "");
    expectGoodValues(second);
    EXPECT_EQ(second.fileName(), name);
    EXPECT_EQ(second.Name(), name);
}

TEST(AtmFileCache, DoesNotKeepFailures) {
    const TemporaryDirectory directory;
    const std::string name = directory.write("later.atm", "1 2\n");
    AtmFile atm;
    EXPECT_NE(messageOfLoad(atm, name, false), "");
    EXPECT_FALSE(atm.InCache());
    directory.write("later.atm", kGood);
    EXPECT_EQ(messageOfLoad(atm, name, true), "");
    expectGoodValues(atm);
}

TEST(AtmFileCache, IsEmptiedWholeByTheLoadThatFindsMoreThan256Entries) {
    const TemporaryDirectory directory;
    int made = 0;
    const auto loadNewFile = [&] {
        std::string name = directory.write("file" + std::to_string(made++) + ".atm", kGood);
        AtmFile atm;
        EXPECT_TRUE(atm.Load(name));
        std::filesystem::remove(name);
        return name;
    };
    // Loads new files until one of them empties the cache; that one is then its only entry.
    const auto loadUntilEmptied = [&] {
        AtmFile first;
        EXPECT_TRUE(first.Load(loadNewFile()));
        for (int loads = 1; loads < 1000; ++loads) {
            loadNewFile();
            if (!first.InCache())
                return loads;
        }
        return -1;
    };
    loadUntilEmptied(); // other tests may have left entries
    // The first of these loads makes entry 2, so that 256 loads make 257 entries and one more empties the cache.
    EXPECT_EQ(loadUntilEmptied(), 256);
}

TEST(AtmFile, PointsTowardsTheSun) {
    struct Row {
        float ninth = 0; // 180 - zenith
        float azimuth = 0;
        Vector<float> direction;
    };
    // The cosine of 90 degrees shows the constant: its neighbour would give -1.62920685e-07.
    constexpr float kCosine = -4.37113883e-08F;
    const Row rows[] = {
        {180, 0, {1.91068547e-15F, kCosine, 1, 0}},
        {180, 90, {kCosine, 0, 1, 0}},
        {90, 90, {1, 0, 0, 0}},
        {90, 0, {kCosine, 1, 0, 0}},
        {90, 180, {kCosine, -1, 0, 0}},
        {90, 270, {-1, 8.74227766e-08F, 0, 0}},
        {0, 0, {1.91068547e-15F, kCosine, -1, 0}},
        {130, 225, {-0.54167527F, -0.54167527F, 0.642787635F, 0}},
        {146.75F, -17.5F, {-0.164874956F, 0.522916555F, 0.836286128F, 0}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << row.ninth << ", " << row.azimuth);
        AtmFile atm;
        ASSERT_TRUE(atm.parse(withSun(row.ninth, row.azimuth)));
        const Vector<float> direction = atm.SolarDirWorld();
        for (int i = 0; i < 4; ++i)
            EXPECT_FLOAT_EQ(direction.ElementAt(i), row.direction.ElementAt(i)) << "component " << i;
    }
}

TEST(AtmFile, PrintsItsValues) {
    AtmFile atm;
    ASSERT_TRUE(atm.parse(kGood));
    CaptureStdout();
    atm.PrintData();
    EXPECT_EQ(
        GetCapturedStdout(), "Signature bearing (N to E in deg) = -12.5\n"
                             "Direct solar radiance (W/cm2/str) = 0.00054\n"
                             "Diffuse sky radiance (W/cm2/str) = 6.5e-05\n"
                             "Diffuse earth radiance (W/cm2/str) = 0.00019\n"
                             "Solar azimuth (N to E in deg) = 225\n"
                             "Solar zenith (0 is up in deg) = 50\n"
                             "Solar direction (world coords) = (-0.541675, -0.541675, 0.642788)\n");
}

TEST(AtmFile, ReadsADecimalPointInALocaleWithADecimalComma) {
    const DecimalCommaLocale locale;
    if (!locale.isActive())
        GTEST_SKIP() << "no locale with a decimal comma could be made";
    char written[8];
    std::snprintf(written, sizeof written, "%.1f", 1.5);
    ASSERT_STREQ(written, "1,5");

    AtmFile atm;
    ASSERT_TRUE(atm.parse(kGood));
    expectGoodValues(atm);
    std::snprintf(written, sizeof written, "%.1f", 1.5);
    EXPECT_STREQ(written, "1,5") << "the caller's locale is given back";
}
