// The geometry file: messages, the two index spaces, and what goes onto the corners.
#include "vnlfile.h"

#include <cmath>
#include <cstddef>

#include "bodyfiles.h"
#include "brdffile.h"
#include "facetarrays.h"
#include "filetracker.h"
#include "radfile.h"
#include "rows.h"

using namespace sorvane;

namespace {
// Room for the arrays of a body, and a load into them.
struct Body {
    explicit Body(const std::string& brdfText) {
        EXPECT_TRUE(brdf.parse(brdfText));
        const auto count = static_cast<std::size_t>(brdf.numFacets());
        std::vector<float> radiances(count);
        std::vector<float> emittances(count);
        for (std::size_t k = 0; k < count; ++k) {
            radiances[k] = 1e6F * static_cast<float>(k + 1);
            emittances[k] = 1e7F * static_cast<float>(k + 1);
        }
        EXPECT_TRUE(rad.parse(radBytes(radiances, emittances), brdf.numFacets()));
        EXPECT_TRUE(arrays.allocate(brdf.numFacets()));
    }

    bool load(const std::string& text) {
        FileTracker lines;
        lines.addText(text);
        return vnl.parse(
            lines, brdf, rad,
            {arrays.indices_.get(), arrays.vertices_.get(), arrays.normals_.get(), arrays.primaryColors_.get(),
             arrays.secondaryColors_.get(), arrays.facetCentroids_.get(), arrays.facetNormals_.get(),
             arrays.facetMap_.get()});
    }

    BrdfFile brdf;
    RadFile rad;
    VnlFile vnl;
    FacetArrays arrays;
};

const char* const kTwoClasses = "BRDF\n2\n0 0 0 0 0 x\n0 0 0 0 0 x\n1 1 2 x\n2 2 1 x\n";
const char* const kOneFacet = "BRDF\n1\n0 0 0 0 0 x\n1 1 1 x\n";
const char* const kBox = "-1 1 -2 2 -3 3\n";
const char* const kThreeVertices = "0 0 0 0 0 1 v\n3 0 0 .5 0 1 v\n0 3 0 0 .5 1 v\n";

std::string vnl(const std::string& counts, const std::string& rest) {
    return counts + "\n" + kBox + rest;
}
} // namespace

TEST(VnlFile, SpreadsFacetsOutInClassOrder) {
    Body body(kTwoClasses);
    ASSERT_TRUE(body.load(
        vnl("4 2 extra", std::string(kThreeVertices) + "0 0 6 1 0 0 v\n1 1 2 3 first\n2 1 4 2 second and more\n")));

    // Facet 0 is in the second class and gets slot 1, facet 1 slot 0.
    EXPECT_EQ(body.arrays.facetMap_[0] * 10 + body.arrays.facetMap_[1], 10);
    EXPECT_EQ(body.arrays.indices_[1], (Tuple3<unsigned short>{3, 4, 5}));
    EXPECT_EQ(body.arrays.vertices_[4], (Tuple3<float>{3, 0, 0}));
    EXPECT_EQ(body.arrays.normals_[4], (Tuple3<float>{.5F, 0, 1}));
    EXPECT_EQ(body.arrays.vertices_[1], (Tuple3<float>{0, 0, 6}));
    EXPECT_FLOAT_EQ(body.arrays.primaryColors_[5].z, 1.0F);
    EXPECT_FLOAT_EQ(body.arrays.primaryColors_[0].x, 2.0F);
    EXPECT_FLOAT_EQ(body.arrays.secondaryColors_[2].y, 20.0F);

    // Centroids and normals stay in file order.
    EXPECT_EQ(body.arrays.facetCentroids_[0], Vector<float>(3 * 0.3333333F, 3 * 0.3333333F, 0, 1));
    EXPECT_EQ(body.arrays.facetNormals_[0], Vector<float>(0, 0, 1, 0));
    EXPECT_EQ(body.arrays.facetNormals_[1], Vector<float>(0, 1, 0, 0));

    const auto& box = body.vnl.boundingBox();
    EXPECT_EQ(box[0], Vector<float>(-1, -2, -3, 1));
    EXPECT_EQ(box[2], Vector<float>(1, 2, -3, 1));
    EXPECT_EQ(box[7], Vector<float>(-1, 2, 3, 1));
}

TEST(VnlFile, ReadsUnusualNumbersAsScanfDoes) {
    Body body(kOneFacet);
    EXPECT_FALSE(body.load(vnl("+3 1", "0x1p1 +1e0 -0 0 0 1 v\n3 0 0 0 0 inf v\n1,0 0 0 0 0 1 v\n1 +1 2 3 f\n")));
    ASSERT_TRUE(body.load(vnl("+3 1", "0x1p1 +1e0 -0 0 0 1 v\n3 0 0 0 0 inf v\n0 3 0 0 0 1 v\n1 +1 2 3 f\n")));
    EXPECT_EQ(body.arrays.vertices_[0], (Tuple3<float>{2, 1, 0}));
    EXPECT_TRUE(std::isinf(body.arrays.normals_[1].z));
}

TEST(VnlFile, AFacetWithoutAreaHasNoFiniteNormalAndWithoutFacetsOnlyTheBoxIsRead) {
    Body flat(kOneFacet);
    ASSERT_TRUE(flat.load(vnl("3 1", std::string(kThreeVertices) + "1 2 2 3 f\n")));
    EXPECT_FALSE(std::isfinite(flat.arrays.facetNormals_[0].ElementAt(0)));
    EXPECT_EQ(flat.arrays.facetNormals_[0].ElementAt(3), 0.0F);
    Body empty("BRDF\n1\n0 0 0 0 0 x\n");
    ASSERT_TRUE(empty.load(vnl("0 0", "ignored")));
    EXPECT_EQ(empty.vnl.boundingBox()[6], Vector<float>(1, 2, 3, 1));
}

TEST(VnlFile, ReportsEachFault) {
    const std::string three = kThreeVertices;
    const std::string longLine = "1 1 2 3 " + std::string(300, 'x') + "\n";
    for (const auto& [brdf, text, report] : Rows<const char*, std::string, std::string>{
             {kOneFacet, "3 one\n", "Malformed line 1. Expected 2 ints, but received \"3 one\n\"."},
             {kOneFacet, "3 2\n",
              "Number of facets in VNL file, 2, does not match the number of facets in the BRDF file, 1."},
             {kOneFacet, "3 1\n", "Unexpected EOF when trying to read bounding box."},
             {kOneFacet, "3 1\n1 2 3 4 5", "Malformed line 2. Expected 6 floats but received \"1 2 3 4 5\"."},
             {kOneFacet, vnl("-1 1", ""), "Could not allocate -1 Vertex objects for array vnlVertex."},
             {kOneFacet, vnl("2147483647 1", "0 0 0 0 0 1 v\n"), "Unexpected EOF when reading vertex 2."},
             {kOneFacet, vnl("3 1", "0 0 0 0 0 1 v\n0 0 0 0 0 1\n"), "Malformed line 4. Received \"0 0 0 0 0 1\n\"."},
             {kOneFacet, vnl("3 1", three), "Unexpected EOF when trying to read facet 1."},
             {kOneFacet, vnl("3 1", three + "1 1 2 3\n"),
              "Malformed line 6 when reading facet 1. Received \"1 1 2 3\n\"."},
             {kTwoClasses, vnl("3 2", three + longLine + "2 1 2 3 f\n"),
              "Malformed line 7 when reading facet 2. Received \"" + longLine.substr(255) + "\"."}}) {
        Body body(brdf);
        EXPECT_EQ(reportOf([&, &text = text] { EXPECT_FALSE(body.load(text)); }), "vnlfile Load: " + report);
    }

    Body body(kOneFacet);
    testing::internal::CaptureStdout();
    EXPECT_EQ(
        reportOf([&] { EXPECT_FALSE(body.load("")); }),
        "vnlfile Load: Unexpected EOF when trying to read number of vertices and subfacets.");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "VnlFile::Load: unexpected EOF found.\n");
    EXPECT_EQ(body.vnl.boundingBox()[6], Vector<float>(0, 0, 0, 1));
    EXPECT_EQ(
        reportOf([&] {
            EXPECT_FALSE(body.vnl.Load(
                "/no/such.vnl", body.brdf, body.rad, body.arrays.indices_.get(), body.arrays.vertices_.get(),
                body.arrays.normals_.get(), body.arrays.primaryColors_.get(), body.arrays.secondaryColors_.get(),
                body.arrays.facetCentroids_.get(), body.arrays.facetNormals_.get(), body.arrays.facetMap_.get()));
        }),
        "vnlfile Load: Unable to open \"/no/such.vnl\" for reading.");
}

TEST(VnlFile, AFacetWithoutClassFailsTheLoad) {
    Body body("BRDF\n1\n0 0 0 0 0 x\n1 1 1 x\n3 3 1 x\n");
    EXPECT_EQ(
        reportOf([&] { EXPECT_FALSE(body.load(vnl("3 2", std::string(kThreeVertices) + "1 1 2 3 f\n2 1 2 3 f\n"))); }),
        "brdffile SortedFacetIndex: Invalid BRDF class index -1 for facet 1. Class index should be between "
        "nonnegative and smaller than numBrdfClasses_ = 1.");
}

TEST(VnlFile, AVertexThatIsNotThereEndsTheProcess) {
    for (const auto& [facet, report] : Rows<const char*, std::string>{
             {"1 0 1 2 f\n", "us0 should be less than numVerts = 3, but is 65535"},
             {"1 1 4 9 f\n", "us1 should be less than numVerts = 3, but is 3"},
             {"1 1 2 -7 f\n", "us2 should be less than numVerts = 3, but is 65528"}})
        EXPECT_EXIT(
            Body(kOneFacet).load(vnl("3 1", std::string(kThreeVertices) + facet)), testing::ExitedWithCode(1),
            "^Error in function \"Load\" of file \"opengllib/vnlfile.cpp\" .*: " + report + "\\.\n$");
}

// Up to 65,536 vertices only 16 bits of a number count; with more, all of it does.
TEST(VnlFile, AVertexNumberWrapsOnlyInABodyThat16BitsCanNumber) {
    const auto text = [](int vertices, const std::string& facet) {
        std::string lines = "7 0 0 0 0 1 v\n";
        for (int vertex = 2; vertex < vertices; ++vertex)
            lines += "0 0 0 0 0 1 v\n";
        return vnl(std::to_string(vertices) + " 1", lines + "9 0 0 0 0 1 v\n" + facet);
    };
    for (const auto& [vertices, facet, x, named, taken] : Rows<int, const char*, float, int, int>{
             {65536, "1 65536 1 2 f\n", 9.0F, 0, 0},
             {65536, "1 65537 1 2 f\n", 7.0F, 65537, 1},
             {65536, "1 0 131073 2 f\n", 9.0F, 0, 65536},
             {65537, "1 65537 1 2 f\n", 9.0F, 0, 0},
             {65537, "1 1 65537 2 f\n", 7.0F, 0, 0}}) {
        Body body(kOneFacet);
        ASSERT_TRUE(body.load(text(vertices, facet)));
        EXPECT_EQ(body.arrays.vertices_[0].x, x) << vertices << ' ' << facet;
        ASSERT_EQ(body.vnl.wrappedFacets().size(), taken == 0 ? 0U : 1U) << vertices << ' ' << facet;
        if (taken != 0) {
            const VnlFile::WrappedFacet& wrapped = body.vnl.wrappedFacets()[0];
            EXPECT_EQ(wrapped.line, vertices + 3);
            EXPECT_EQ(wrapped.facet, 0);
            EXPECT_EQ(wrapped.named, named);
            EXPECT_EQ(wrapped.taken, taken);
        }
    }
    for (const auto& [facet, report] : Rows<const char*, std::string>{
             {"1 0 1 2 f\n", "us0 should be less than numVerts = 65537, but is -1"},
             {"1 1 2 65538 f\n", "us2 should be less than numVerts = 65537, but is 65537"}})
        EXPECT_EXIT(Body(kOneFacet).load(text(65537, facet)), testing::ExitedWithCode(1), ": " + report + "\\.\n$");
}
