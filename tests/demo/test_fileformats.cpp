// The examples in docs/file-formats.md load with the readers that they are for.
#include <array>
#include <memory>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "atmfile.h"
#include "brdffile.h"
#include "facetarrays.h"
#include "filetracker.h"
#include "radfile.h"
#include "rotor.h"
#include "subfacetfile.h"
#include "temporarydirectory.h"
#include "vnlfile.h"

using namespace sorvane;

namespace {
// The example below a heading that begins so.
std::string example(std::string_view heading) {
    static const std::string page = readWholeFile(SORVANE_FILE_FORMATS);
    constexpr std::string_view kFence = "\n```\n";
    const std::size_t section = page.find("\n## " + std::string(heading));
    const std::size_t start = page.find(kFence, section) + kFence.size();
    if (section == std::string::npos || start < section)
        return {};
    return page.substr(start, page.find(kFence, start) + 1 - start);
}

class FileFormats : public testing::Test {
protected:
    void SetUp() override { testing::internal::CaptureStderr(); }
    void TearDown() override { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }
};
} // namespace

TEST_F(FileFormats, ShowABodyThatFacesOutwards) {
    const TemporaryDirectory directory;
    BrdfFile brdf;
    ASSERT_TRUE(brdf.parse(example("Reflectance")));
    ASSERT_EQ(brdf.numFacets(), 4);
    RadFile rad;
    std::string bytes(84 + 8 * 4, '\0');
    bytes[40] = 4;
    ASSERT_TRUE(rad.parse(bytes, 4));
    FacetArrays arrays;
    ASSERT_TRUE(arrays.allocate(4));
    VnlFile vnl;
    ASSERT_TRUE(vnl.Load(
        directory.write("body.vnl", example("Geometry")), brdf, rad, arrays.indices_.get(), arrays.vertices_.get(),
        arrays.normals_.get(), arrays.primaryColors_.get(), arrays.secondaryColors_.get(), arrays.facetCentroids_.get(),
        arrays.facetNormals_.get(), arrays.facetMap_.get()));
    for (std::size_t facet = 0; facet < 4; ++facet) {
        float outwards = 0.0F;
        for (int axis = 0; axis < 3; ++axis)
            outwards +=
                arrays.facetNormals_[facet].ElementAt(axis) * (arrays.facetCentroids_[facet].ElementAt(axis) - 0.25F);
        EXPECT_GT(outwards, 0.0F) << facet;
    }
}

TEST_F(FileFormats, ShowAnAtmosphereThatLightsFromAbove) {
    AtmFile atm;
    ASSERT_TRUE(atm.parse(example("Atmosphere")));
    EXPECT_LT(atm.SolarDirWorld().ElementAt(2), 0.0F);
    EXPECT_FLOAT_EQ(atm.directSolarRadiance(), 1.7e-4F);
}

TEST_F(FileFormats, ShowFormFactorsAndRotors) {
    const TemporaryDirectory directory;
    std::array<float, 2> earth{};
    std::array<float, 2> sky{};
    SubfacetFile factors;
    ASSERT_TRUE(factors.Load(directory.write("body.sff-txt", example("Form factors")), earth, sky));
    EXPECT_EQ(sky[1], 0.4375F);
    EXPECT_EQ(factors.visibleFrom(1).size(), 1U);

    const Rotor rotor(directory.write("body.rotor", example("Rotors")).c_str());
    ASSERT_EQ(rotor.getRotorCount(), 2);
    EXPECT_EQ(rotor.getRotorEnd(2), 4784);
}
