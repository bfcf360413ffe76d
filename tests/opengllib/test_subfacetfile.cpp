// The form-factor file: what is read, what is refused.
#include "subfacetfile.h"

#include <limits>

#include "bodyfiles.h"
#include "filetracker.h"
#include "rows.h"

using namespace sorvane;

namespace {
bool parse(SubfacetFile& file, const std::string& text) {
    FileTracker lines;
    lines.addText(text);
    return file.parse(lines);
}

const char* const kThree = "3 facets\n1 .5 .25 2 nose\n2 .125\n3 +1e-1\n2 0 1 0\n3 .75 0 1\n1 0.0625\n";
} // namespace

TEST(SubfacetFile, ReadsFormFactorsAndVisibleFacets) {
    SubfacetFile file;
    ASSERT_TRUE(parse(file, kThree));
    ASSERT_EQ(file.facetCount(), 3U);
    EXPECT_EQ(file.earthFormFactor(2), 0.75F);
    EXPECT_EQ(file.skyFormFactor(0), 0.25F);
    ASSERT_EQ(file.visibleFrom(0).size(), 2U);
    EXPECT_EQ(file.visibleFrom(0)[1].facet, 2);
    EXPECT_EQ(file.visibleFrom(0)[1].formFactor, 0.1F);
    EXPECT_TRUE(file.visibleFrom(1).empty());
    EXPECT_EQ(file.visibleFrom(2)[0].facet, 0);
}

TEST(SubfacetFile, ReportsEachFaultAndKeepsNothing) {
    const auto malformed = [](int line, int facet, const std::string& received) {
        return "Malformed line " + std::to_string(line) + " when reading facet " + std::to_string(facet) +
               ". Received \"" + received + "\".";
    };
    for (const auto& [text, report] : Rows<const char*, std::string>{
             {"", "Unexpected EOF when trying to read number of facets."},
             {"many\n", "Malformed line 1. Expected a number of facets, but received \"many\n\"."},
             {"-1\n", "Malformed line 1. Expected a number of facets, but received \"-1\n\"."},
             {"2147483647\n", "Unexpected EOF when trying to read facet 1."},
             {"1\n1 0 0\n", malformed(2, 1, "1 0 0\n")},
             {"1\n2 0 0 0\n", malformed(2, 1, "2 0 0 0\n")},
             {"1\n1 nan 0 0\n", malformed(2, 1, "1 nan 0 0\n")},
             {"1\n1 0 -.5 0\n", malformed(2, 1, "1 0 -.5 0\n")},
             {"1\n1 0 0 -1\n", malformed(2, 1, "1 0 0 -1\n")},
             {"2\n1 0 0 2147483647\n2 0\n", "Unexpected EOF when trying to read facet 1."},
             {"2\n1 0 0 1\n3 .5\n", malformed(3, 1, "3 .5\n")},
             {"2\n1 0 0 1\n0 .5\n", malformed(3, 1, "0 .5\n")},
             {"2\n1 0 0 1\n1 .5\n", malformed(3, 1, "1 .5\n")}, // itself
             {"2\n1 0 0 1\n2 inf\n", malformed(3, 1, "2 inf\n")},
             {"2\n1 0 0 1\n2 .5\n2 0\n", malformed(4, 2, "2 0\n")}}) {
        SubfacetFile file;
        EXPECT_EQ(reportOf([&, &text = text] { EXPECT_FALSE(parse(file, text)); }), "subfacetfile Load: " + report);
        EXPECT_EQ(file.facetCount(), 0U);
    }
}

TEST(SubfacetFile, FillsTheArraysOfABodyOfAsManyFacets) {
    const TemporaryFile onDisk(kThree);
    std::vector<float> earth(3, 9.0F);
    std::vector<float> sky(3, 9.0F);
    SubfacetFile file;
    EXPECT_TRUE(file.Load(onDisk.path(), earth, sky));
    EXPECT_EQ(earth, (std::vector<float>{0.5F, 0.0F, 0.75F}));
    EXPECT_EQ(sky, (std::vector<float>{0.25F, 1.0F, 0.0F}));

    std::vector<float> other(4, 9.0F);
    EXPECT_TRUE(file.Load(onDisk.path(), other, other));
    EXPECT_EQ(other, std::vector<float>(4, 9.0F));

    EXPECT_EQ(reportOf([&] { EXPECT_FALSE(file.Load("/no/such.sff-txt", earth, sky)); }), "");
    EXPECT_EQ(file.facetCount(), 0U);
}

TEST(SubfacetFile, InitWantsANormalPerFacetAndDropsFacetsWithoutArea) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const Vector<float> up(0, 0, 1, 0);
    const Vector<float> none(nan, nan, nan, 0);
    SubfacetFile file;
    ASSERT_TRUE(parse(file, kThree));
    EXPECT_FALSE(file.Init(std::vector{up, up}));
    EXPECT_TRUE(file.Init(std::vector{up, none, up}));
    ASSERT_EQ(file.visibleFrom(0).size(), 1U);
    EXPECT_EQ(file.visibleFrom(0)[0].facet, 2);
    EXPECT_EQ(file.visibleFrom(2).size(), 1U);
    EXPECT_TRUE(file.Init(std::vector{up, up, none}));
    EXPECT_TRUE(file.visibleFrom(0).empty() && file.visibleFrom(2).empty());
}
