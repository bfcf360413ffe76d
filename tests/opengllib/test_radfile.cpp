// The radiance file: its messages, units and limits.
#include "radfile.h"

#include <limits>

#include "bodyfiles.h"
#include "rows.h"

using namespace sorvane;

TEST(RadFile, ScalesRadiancesAndEmittances) {
    RadFile file;
    ASSERT_TRUE(file.parse(radBytes({2e6F, 5e5F, 4e6F}, {1e6F, 3e6F, 0.0F}) + "ignored", 3));
    EXPECT_FLOAT_EQ(file.rad()[0], 2.0F);
    EXPECT_FLOAT_EQ(file.rad()[1], 0.5F);
    EXPECT_FLOAT_EQ(file.bbe()[1], 3.0F);
}

TEST(RadFile, AFacetThatLowersTheMinimumIsNeverTheMaximum) {
    RadFile file;
    ASSERT_TRUE(file.parse(radBytes({3e6F, 2e6F}, {7e6F, 8e6F}), 2));
    EXPECT_FLOAT_EQ(file.minRadiance(), 2.0F);
    EXPECT_EQ(file.maxRadiance(), 1.1754944e-38F);
    EXPECT_FLOAT_EQ(file.maxEmittance(), 8.0F);
}

TEST(RadFile, ReportsEachFaultAndFreesTheArrays) {
    const std::string good = radBytes({1, 2, 3, 4}, {5, 6, 7, 8});
    std::string negative = radBytes({}, {});
    const std::int32_t count = -2;
    negative.replace(40, 4, reinterpret_cast<const char*>(&count), 4);
    const std::string eof = "Unexpected EOF when trying to read ";
    for (const auto& [bytes, expected, report] : Rows<std::string, int, std::string>{
             {"", 4, "Unexpected EOF while trying to read header."},
             {good.substr(0, 75), 4, "Unexpected EOF while trying to read header."},
             {good, 3, "File contains 4 facets, but only expected 3."},
             {negative, -2, "Could not allocate -2 floats (-8 bytes) for array rad_."},
             {good.substr(0, 76 + 11), 4, eof + "radiance values (expected 2, but only found 4)."},
             {good.substr(0, 76 + 16 + 7), 4, eof + "padding."},
             {good.substr(0, 76 + 16 + 8 + 15), 4, eof + "blackbody emittances (expected 3, but only found 4)."}}) {
        RadFile file;
        EXPECT_EQ(
            reportOf([&, &bytes = bytes, &expected = expected] { EXPECT_FALSE(file.parse(bytes, expected)); }),
            "radfile Load: " + report);
        EXPECT_EQ(file.rad(), nullptr);
        EXPECT_EQ(file.bbe(), nullptr);
    }
    RadFile file;
    EXPECT_EQ(
        reportOf([&] { EXPECT_FALSE(file.Load("/no/such.rad", 4)); }),
        "radfile Load: Unable to open \"/no/such.rad\" for reading.");
}

TEST(RadFile, RefusesNotANumber) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    for (const std::string& bytes : {radBytes({1, 2}, {3, nan}), radBytes({nan, 2}, {3, 4})}) {
        RadFile file;
        testing::internal::CaptureStdout();
        EXPECT_EQ(reportOf([&] { EXPECT_FALSE(file.parse(bytes, 2)); }), "");
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "RadFile::Load: NaN radiance values detected! \n");
        EXPECT_EQ(file.rad(), nullptr);
    }
}

TEST(RadFile, DumpsLimitsAndFacetsAsText) {
    const TemporaryFile input(radBytes({2e6F, 4e6F}, {2e6F, 1e6F}));
    const TemporaryFile output("");
    RadFile file;
    ASSERT_TRUE(file.Load(input.path(), 2));
    file.DumpArrays(99, output.path());
    file.DumpArrays(1, "/no/such/folder/dump");
    EXPECT_EQ(
        readWholeFile(output.path()), "Minimum Radiance: facet 0, radiance (W/cm2/sr): 2.000000\n"
                                      "Maximum Radiance: facet 1, radiance (W/cm2/sr): 4.000000\n"
                                      "Minimum Emittance: facet 1, emittance (W/cm2/sr): 1.000000\n"
                                      "Maximum Emittance: facet 0, emittance (W/cm2/sr): 0.000000\n"
                                      "Facet 0:\tEmittance: 2.0000000\tRadiance: 2.0000000\t(E/R): 1.000000\n"
                                      "Facet 1:\tEmittance: 1.0000000\tRadiance: 4.0000000\t(E/R): 0.250000\n");
}
