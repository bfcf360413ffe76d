// The atmosphere file: values, messages, the cache and the direction of the sun.
#include <cstdio>
#include <string>

#include <gtest/gtest.h>

#include "atmfile.h"
#include "capturedoutput.h"
#include "decimalcommalocale.h"
#include "rows.h"
#include "temporarydirectory.h"

using namespace sorvane;

namespace {
const std::string kGood = "1.0 2.0 3.0\n"
                          "1 2 3.5 4 5 6.5 7.5 8.5 130 225\n"
                          "1.9 0.65 5.4 -12.5\n";

void expectAllZero(const AtmFile& atm) {
    for (const float value :
         {atm.solarZenith(), atm.solarAzimuth(), atm.diffuseEarthRadiance(), atm.diffuseSkyRadiance(),
          atm.directSolarRadiance(), atm.signatureBearing()})
        EXPECT_EQ(value, 0.0F);
}

void expectGoodValues(const AtmFile& atm) {
    EXPECT_EQ(atm.solarZenith(), 50.0F);
    EXPECT_EQ(atm.solarAzimuth(), 225.0F);
    EXPECT_EQ(atm.diffuseEarthRadiance(), 0.000189999992F);
    EXPECT_EQ(atm.diffuseSkyRadiance(), 6.49999929e-05F);
    EXPECT_EQ(atm.directSolarRadiance(), 0.000539999979F);
    EXPECT_EQ(atm.signatureBearing(), -12.5F);
}

std::string outputOfLoad(AtmFile& atm, const std::string& name, bool result) {
    return outputOf([&] { EXPECT_EQ(atm.Load(name), result) << name; });
}

std::string loadError(const std::string& message) {
    return errorLine("Load", "opengllib/atmfile.cpp", message);
}
} // namespace

TEST(AtmFile, TakesWhateverTheScanFormatsTake) {
    AtmFile atm;
    EXPECT_TRUE(atm.parse("\t1e0 0x10 .5 more\r\n 1 2 3.9 +4 -5 6 7 8 1e2 0x1p4 eleven\r\n10000 1. -2 nan"));
    EXPECT_EQ(atm.solarZenith(), 80.0F);
    EXPECT_EQ(atm.solarAzimuth(), 16.0F);
    EXPECT_EQ(atm.diffuseEarthRadiance(), 1.0F);
    EXPECT_EQ(atm.diffuseSkyRadiance(), 0.0001F);
    EXPECT_EQ(atm.directSolarRadiance(), -0.0002F);
    EXPECT_NE(atm.signatureBearing(), atm.signatureBearing());
    // A line longer than the buffer goes on as the next line.
    EXPECT_TRUE(atm.parse("1 2 3" + std::string(250, ' ') + "1 2 3 4 5 6 7 8 90 10\n1 2 3 4\n"));
    EXPECT_EQ(atm.solarAzimuth(), 10.0F);
}

TEST(AtmFile, ReportsWhatIsWrongWithItsTextOnce) {
    const std::string one = "1 2 3\n";
    const std::string two = "1 2 3 4 5 6 7 8 9 10\n";
    const std::string blanks(254, ' ');
    const std::string lineOne = "Unexpected file format, line 1. Expected 3 floats, but received \"";
    const std::string lineTwo = "Unexpected file format, line 2. Received \"";
    const std::string lineThree = "Unexpected file format, line 3. Expected 4 floats, but received \"";
    for (const auto& [text, message] : Rows<std::string, std::string>{
             {"", "Unexpected EOF found when reading line 1."},
             {one, "Unexpected EOF found when reading line 2."},
             {one + two, "Unexpected EOF found when reading line 3."},
             {"1 2 %d", lineOne + "1 2 %d\"."},
             {std::string("1 2\0 3\n", 7) + two, lineOne + "1 2\"."},
             {one + "1 2 3 4.5 5 6 7 8 9 10\n", lineTwo + "1 2 3 4.5 5 6 7 8 9 10\n\"."},
             {one + two + "1 2 3\n4\n", lineThree + "1 2 3\n\"."},
             {"1 2 3" + blanks + "rest\n" + two + "1 2 3 4\n", lineTwo + "    rest\n\"."}}) {
        AtmFile atm;
        EXPECT_EQ(outputOf([&, &text = text] { EXPECT_FALSE(atm.parse(text)); }), loadError(message)) << text;
        expectAllZero(atm);
    }
}

TEST(AtmFile, ReportsAFileThatCanNotBeOpenedAndReadsTheBeginningOfALongOne) {
    const TemporaryDirectory directory;
    AtmFile atm;
    for (const std::string& name : {directory.file("missing.atm"), directory.path().string(), std::string()}) {
        EXPECT_EQ(outputOfLoad(atm, name, false), loadError("Unable to open file \"" + name + "\" for reading."));
        EXPECT_EQ(atm.fileName(), name);
    }
    expectAllZero(atm);
    const std::string name = directory.write("long.atm", kGood);
    std::filesystem::resize_file(name, std::uintmax_t{1} << 33); // sparse
    EXPECT_EQ(outputOfLoad(atm, name, true), "");
    expectGoodValues(atm);
}

TEST(AtmFileCache, AnswersForAFileThatWasLoadedBefore) {
    const TemporaryDirectory directory;
    const std::string name = directory.write("cached.atm", "1 2\n");
    AtmFile first;
    EXPECT_NE(outputOfLoad(first, name, false), "");
    EXPECT_FALSE(first.InCache()) << "failures are not kept";
    directory.write("cached.atm", kGood);
    EXPECT_EQ(outputOfLoad(first, name, true), "");
    EXPECT_TRUE(first.InCache());
    std::filesystem::remove(name);

    AtmFile second;
    EXPECT_EQ(outputOfLoad(second, name, true), "");
    expectGoodValues(second);
    EXPECT_EQ(second.fileName(), name);
    EXPECT_EQ(second.Name(), name);
}

TEST(AtmFile, PointsTowardsTheSun) {
    // The cosine of 90 degrees shows the constant: its neighbour would give -1.62920685e-07. The first column is
    // 180 - zenith.
    constexpr float kCosine = -4.37113883e-08F;
    for (const auto& [ninth, azimuth, expected] : Rows<std::string, std::string, Vector<float>>{
             {"180", "0", {1.91068547e-15F, kCosine, 1, 0}},
             {"90", "0", {kCosine, 1, 0, 0}},
             {"90", "270", {-1, 8.74227766e-08F, 0, 0}},
             {"130", "225", {-0.54167527F, -0.54167527F, 0.642787635F, 0}},
             {"146.75", "-17.5", {-0.164874956F, 0.522916555F, 0.836286128F, 0}}}) {
        AtmFile atm;
        ASSERT_TRUE(atm.parse("1 2 3\n1 2 3 4 5 6 7 8 " + ninth + " " + azimuth + "\n1 2 3 4\n"));
        for (int i = 0; i < 4; ++i)
            EXPECT_FLOAT_EQ(atm.SolarDirWorld().ElementAt(i), expected.ElementAt(i)) << ninth << ", " << azimuth;
    }
}

TEST(AtmFile, ReadsAndPrintsDecimalPointsInALocaleWithADecimalComma) {
    const DecimalCommaLocale locale;
    AtmFile atm;
    ASSERT_TRUE(atm.parse(kGood));
    expectGoodValues(atm);
    char written[8];
    std::snprintf(written, sizeof written, "%.1f", 1.5);
    EXPECT_STREQ(written, "1,5") << "the caller's locale is given back";
    EXPECT_EQ(
        outputOf([&] { atm.PrintData(); }), "Signature bearing (N to E in deg) = -12.5\n"
                                            "Direct solar radiance (W/cm2/str) = 0.00054\n"
                                            "Diffuse sky radiance (W/cm2/str) = 6.5e-05\n"
                                            "Diffuse earth radiance (W/cm2/str) = 0.00019\n"
                                            "Solar azimuth (N to E in deg) = 225\n"
                                            "Solar zenith (0 is up in deg) = 50\n"
                                            "Solar direction (world coords) = (-0.541675, -0.541675, 0.642788)\n");
}
