// The reflectance file: its messages, the classes of facets and their slots.
#include "brdffile.h"

#include <cmath>

#include "bodyfiles.h"
#include "rows.h"

using namespace sorvane;

namespace {
BrdfFile parsed(const std::string& text) {
    BrdfFile file;
    EXPECT_TRUE(file.parse(text)) << text;
    return file;
}
} // namespace

TEST(BrdfFile, ReadsClassesAndRanges) {
    const BrdfFile file =
        parsed("BRDF v1\n2\n0.1 0.8 0 0.3 0 matt\n.2 .5 .5 4e-1 2 gloss\n1 10 2 skin\n11 12 1 nose\n");
    ASSERT_EQ(file.numBrdfClasses(), 2);
    EXPECT_EQ(file.classes()[0].rho_d, 0.1F);
    EXPECT_EQ(file.classes()[0].epsilon, 0.8F);
    EXPECT_EQ(file.classes()[0].G, 1.0F);
    EXPECT_EQ(file.classes()[1].b, 0.5F);
    EXPECT_EQ(file.classes()[1].e, 0.4F);
    EXPECT_EQ(file.classes()[1].mode, 2);
    EXPECT_NEAR(file.classes()[1].G, 0.71720251F, 1e-6F);
    EXPECT_NEAR(parsed("BRDF\n1\n.1 .1 2 .1 0 x\n").classes()[0].G, 0.28279749F, 1e-6F);
    EXPECT_FALSE(std::isfinite(parsed("BRDF\n1\n.1 .1 1 .1 0 x\n").classes()[0].G)) << "deliberately not guarded";
    EXPECT_EQ(file.numFacets(), 12);
    EXPECT_EQ(file.numVertices(), 36);
    EXPECT_EQ(file.elements()[1].start, 10);
    EXPECT_EQ(file.elements()[1].end, 11);
    EXPECT_EQ(file.elements()[1].brdfClass, 0);
    // The word at the end of a line may be missing. The second half of a long range line counts as one of its own.
    EXPECT_EQ(parsed("BRDF\n1\n.1 .2 .3 .4 0\n1 3 1").numFacets(), 3);
    EXPECT_EQ(parsed("BRDF\n1\n0 0 0 0 0 x\n1 2 1 " + std::string(249, 'x') + "3 4 1\n").numFacets(), 4);
}

TEST(BrdfFile, ReportsEachFaultAndKeepsNothing) {
    for (const auto& [text, report] : Rows<const char*, std::string>{
             {"", "Unable to read the BRDF file header on line 1 (unexpected EOF)."},
             {"  \nBRDF\n", "Corrupt BRDF file header on line 1."},
             {"BRDFX\n", "Missing BRDF file signature on line 1."},
             {"BRDF\n", "Unable to read the number of BRDF classes on line 2 (unexpected EOF)."},
             {"BRDF\nmany\n", "Bad format for the number of BRDF classes on line 2 (expected an int)."},
             {"BRDF\n0\n", "Invalid number of BRDF classes on line 2. Should be positive but is 0."},
             {"BRDF\n2147483647\n", "Unable to read the BRDF class on line 3 (unexpected EOF)."},
             {"BRDF\n2\n0 0 0 0 0 x\n", "Unable to read the BRDF class on line 4 (unexpected EOF)."},
             {"BRDF\n1\n0 0 0 0 word\n", "Bad format for the BRDF class on line 3."},
             {"BRDF\n1\n0 0 -.25 0 0 x\n",
              "Invalid brdf_fresnel (b) parameter on line 3 (parameter #3). b should be nonnegative but is -0.250000."},
             {"BRDF\n1\n0 0 0 0 0 x\n1 4 1 x\n5 6\n", "Bad format on line 5 (expected 3 ints)."},
             {"BRDF\n1\n0 0 0 0 0 x\n7 6 0 x\n",
              "Error on line 4. Starting index (parameter 1) 7 is larger than ending index (parameter 2) 6."},
             {"BRDF\n1\n0 0 0 0 0 x\n1 2 0 x\n",
              "Error on line 4. Bad brdfClass (parameter 3). brdfClass is 0 but should be a positive integer."},
             {"BRDF\n1\n0 0 0 0 0 x\n1 2 2 x\n",
              "Error on line 4. Bad brdfClass (parameter 3). brdfClass is 2 but should be a positive integer."},
             {"BRDF\n1\n0 0 0 0 0 x\n1 715827882 1 x\n1 1 1 x\n", "Bad format on line 5 (expected 3 ints)."},
             {"BRDF\n1\n0 0 0 0 0 x\n-2147483648 -2147483648 1 x\n", "Bad format on line 4 (expected 3 ints)."}}) {
        BrdfFile file;
        EXPECT_EQ(reportOf([&, &text = text] { EXPECT_FALSE(file.parse(text)); }), "brdffile Load: " + report);
        EXPECT_EQ(file.numFacets(), 0);
        EXPECT_TRUE(file.classes().empty() && file.elements().empty() && file.blocks().empty());
    }
}

TEST(BrdfFile, SlotsBringTheFacetsOfAClassTogether) {
    BrdfFile file = parsed("BRDF\n2\n0 0 0 0 0 x\n0 0 0 0 0 x\n1 10 2 x\n11 12 1 x\n");
    for (int facet = 0; facet < 10; ++facet)
        EXPECT_EQ(file.SortedFacetIndex(facet), facet + 2);
    EXPECT_EQ(file.SortedFacetIndex(10), 0);
    EXPECT_EQ(file.SortedFacetIndex(11), 1);

    EXPECT_EQ(
        reportOf([&] { EXPECT_EQ(file.SortedFacetIndex(11), -1); }),
        "brdffile SortedFacetIndex: Invalid blockVector index. Value is 3 be should be no greater than startIndex_ + "
        "facetCount_ = 0 + 2 = 2.");
    EXPECT_EQ(file.blocks()[0].next, 3);
    EXPECT_EQ(
        reportOf([&] { EXPECT_EQ(file.SortedFacetIndex(12), -1); }),
        "brdffile SortedFacetIndex: Invalid BRDF class index -1 for facet 12. Class index should be between "
        "nonnegative and smaller than numBrdfClasses_ = 2.");
}

TEST(BrdfFile, FindsTheClassOfAFacet) {
    const BrdfFile one = parsed("BRDF\n2\n0 0 0 0 0 x\n0 0 0 0 0 x\n5 6 2 x\n");
    EXPECT_EQ(one.FacetIndxToBrdfClass(-7), 1);
    EXPECT_EQ(one.FacetIndxToBrdfClass(1000), 1);

    const BrdfFile gaps = parsed("BRDF\n3\n0 0 0 0 0 x\n0 0 0 0 0 x\n0 0 0 0 0 x\n1 2 3 x\n4 4 1 x\n6 9 2 x\n");
    const int expected[] = {2, 2, -1, 0, -1, 1, 1, 1, 1, -1};
    for (int facet = 0; facet < 10; ++facet)
        EXPECT_EQ(gaps.FacetIndxToBrdfClass(facet), expected[facet]) << facet;

    EXPECT_EQ(parsed("BRDF\n1\n0 0 0 0 0 x\n").FacetIndxToBrdfClass(0), -1);

    // The range of the facet before is no short cut where the next one begins with its last facet.
    BrdfFile overlapping = parsed("BRDF\n2\n0 0 0 0 0 x\n0 0 0 0 0 x\n1 5 1 x\n5 9 2 x\n");
    EXPECT_EQ(overlapping.SortedFacetIndex(5), 5);
    EXPECT_EQ(overlapping.SortedFacetIndex(4), 0);
}

TEST(BrdfFile, ASecondLoadComesFromTheCacheWithFreshSlots) {
    std::string path;
    {
        const TemporaryFile onDisk("BRDF\n1\n0 0 0 0 0 x\n1 2 1 x\n");
        path = onDisk.path();
        BrdfFile first;
        EXPECT_EQ(first.fileName(), "brdf::filename");
        ASSERT_TRUE(first.Load(path));
        EXPECT_EQ(first.SortedFacetIndex(0), 0);
    }
    BrdfFile second;
    ASSERT_TRUE(second.Load(path));
    EXPECT_EQ(second.Name(), path);
    EXPECT_EQ(second.fileName(), path);
    EXPECT_EQ(second.SortedFacetIndex(0), 0);

    EXPECT_EQ(
        reportOf([&] { EXPECT_FALSE(second.Load("/no/such.brdf")); }),
        "brdffile Load: Could not open file \"/no/such.brdf\" for reading.");
    EXPECT_EQ(second.numFacets(), 0);
}
