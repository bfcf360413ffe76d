// Bodies from their files to the picture.
#include "hardbody.h"

#include <cmath>
#include <limits>
#include <numbers>

#include "bodyfiles.h"
#include "dynamicdata.h"
#include "glcontext.h"
#include "rows.h"
#include "sandfordrobertson.h"
#include "temporarydirectory.h"

using namespace sorvane;

namespace {
constexpr int kSize = 64; // of the picture, which shows x and y from -1 to 1

struct Options {
    bool multiFacet = true;
    bool rotors = false;
    bool perFrameUpload = false;
    std::string rotorPath;
    float brightness = 1.0F;
    float earth = 0.0F;
    float sky = 0.0F;
    float solarBeam = 0.0F;
    std::string shaderDir = SORVANE_SHADERS;
};

bool init(Hardbody& body, const TemporaryDirectory& folder, const Options& options = {}) {
    return body.Init(
        folder.file("body.brdf"), folder.file("body.vnl"), folder.file("body.rad"), options.shaderDir,
        options.rotorPath, true, true, options.multiFacet, options.rotors, options.perFrameUpload, 0, 0, 0, 0, 0, 0,
        options.brightness, options.earth, options.sky, options.solarBeam);
}

// Two rectangles; the first facet, of the left one, is of the second class.
void writeTwoRectangles(const TemporaryDirectory& folder) {
    Geometry geometry;
    geometry.addRectangle(-1, 0, -1, 1);
    geometry.addRectangle(0, 1, -1, 1);
    folder.write("body.vnl", geometry.text());
    folder.write("body.brdf", "BRDF\n2\n.2 .25 0 .3 0 x\n.2 .75 0 .3 0 x\n1 1 2 x\n2 4 1 x\n");
    folder.write("body.rad", radBytes({1e5F, 2e5F, 3e5F, 4e5F}, {0, 0, 0, 0}));
}

// A folder for the files of a body, and a scene looked at from far above, so that x and y of the model are those of the
// picture.
class HardbodyTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(context.isUsable());
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        const double half = 1.0 / 1000.0;
        glFrustum(-half, half, -half, half, 1.0, 2000.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glTranslatef(0.0F, 0.0F, -1000.0F);
        glEnable(GL_DEPTH_TEST);
    }

    void render(float time = 0.0F, const std::array<float, 3>& origin = {}) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        Dynamic_Data data{{0, 0, 1, 0}, time, origin};
        body.Render(&data);
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        pixels = context.pixels();
    }
    // The red of the pixel at (x, y).
    float at(float x, float y) const {
        const auto pixel = [](float place) {
            return static_cast<std::size_t>((place + 1.0F) / 2.0F * kSize);
        };
        return pixels[4 * (pixel(y) * kSize + pixel(x))];
    }

    const GlContext context{kSize, kSize};
    const TemporaryDirectory folder;
    Hardbody body;
    Options options;
    std::vector<float> pixels;
};
} // namespace

TEST_F(HardbodyTest, DrawsTheRadiancesOfItsFacets) {
    writeTwoRectangles(folder);
    options.brightness = 10.0F;
    EXPECT_EQ(reportOf([&] { ASSERT_TRUE(init(body, folder, options)); }), "");
    render();
    EXPECT_NEAR(at(-0.25F, -0.75F), 1.0F, 1e-5F);
    EXPECT_NEAR(at(-0.75F, 0.75F), 2.0F, 1e-5F);
    EXPECT_NEAR(at(0.75F, -0.75F), 3.0F, 1e-5F);
    EXPECT_NEAR(at(0.25F, 0.75F), 4.0F, 1e-5F);

    body.SetWorldPos(3e6F, -1e6F, 7.0F);
    render(0.0F, {3e6F + 1.0F, -1e6F, 7.0F});
    EXPECT_NEAR(at(-0.75F, -0.75F), 3.0F, 1e-5F) << "relative to the frame's origin";
}

TEST_F(HardbodyTest, ReflectsByTheClassOfEachFacetWithFormFactorsOfOneUnlessAFileGivesThem) {
    writeTwoRectangles(folder);
    options.earth = 0.5F;
    options.sky = 0.25F;
    ASSERT_TRUE(init(body, folder, options));
    render();
    EXPECT_NEAR(at(-0.25F, -0.75F), 0.1F + 0.75F * 0.25F, 1e-4F); // emissivity 0.75
    EXPECT_NEAR(at(0.75F, -0.75F), 0.3F + 0.75F * 0.75F, 1e-4F);  // emissivity 0.25

    folder.write("body.sff-txt", "4\n1 .5 0 0\n2 .5 1 0\n3 1 .25 0\n4 .5 1 0\n");
    ASSERT_TRUE(init(body, folder, options));
    render();
    EXPECT_NEAR(at(-0.25F, -0.75F), 0.1F + 0.25F * 0.25F, 1e-4F);
    EXPECT_NEAR(at(0.75F, -0.75F), 0.3F + 0.5625F * 0.75F, 1e-4F);

    // Those of another body count for nothing.
    folder.write("body.sff-txt", "1\n1 0 0 0\n");
    options.multiFacet = false;
    ASSERT_TRUE(init(body, folder, options));
    render();
    EXPECT_NEAR(at(0.75F, -0.75F), 0.3F + 0.75F * 0.75F, 1e-4F);

    // The sun stands above, and the eye as well: π · f_r · cos 0 · beam.
    folder.write("body.sff-txt", "broken");
    options = {};
    options.solarBeam = 1.0F;
    EXPECT_EQ(
        reportOf([&] { ASSERT_TRUE(init(body, folder, options)); }),
        "subfacetfile Load: Malformed line 1. Expected a number of facets, but received \"broken\".");
    render();
    const Vector<float> up(0, 0, 1, 0);
    EXPECT_NEAR(
        at(0.75F, -0.75F),
        0.3F + std::numbers::pi_v<float> * sr_brdf_internal(0, up, up, up, 0, 0.3F, 0.2F, 0.25F, 1, up), 1e-3F);
}

TEST_F(HardbodyTest, FacetsReflectEachOther) {
    folder.write("body.vnl", floorAndWall().text());
    folder.write("body.brdf", "BRDF\n2\n.3 .4 .3 .4 0 x\n.2 .75 0 .3 0 x\n1 2 2 x\n3 3 1 x\n");
    folder.write("body.rad", radBytes({0, 0, 5e5F}, {0, 0, 0}));
    folder.write("body.sff-txt", "3\n1 0 0 0\n2 0 0 1\n3 .125\n3 0 0 0\n");
    ASSERT_TRUE(init(body, folder));
    body.SetWorldPosAndOrientation(0, 0, 0, 0, 0, 0);
    body.UpdateMultiFacet({0, 0, 1000, 1});

    // By hand: facet 2 is the floor's upper left half, centroid (-1/3, 1/3, 0); the wall's is (0, -1/3, 1/4).
    const Vector<float> up(0, 0, 1, 0);
    Vector<float> toWall(1.0F / 3, -2.0F / 3, 0.25F, 0);
    toWall = toWall / Length(toWall);
    const Vector<float> between = toWall + up;
    const float expected = sr_brdf_internal(0, up, toWall, up, 0, 0.3F, 0.2F, 0.75F, 1, between / Length(between)) *
                           std::numbers::pi_v<float> * 0.125F * 0.5F;
    EXPECT_NEAR(body.multiFacetRadiances()[1], expected, 2e-3F * expected);
    EXPECT_EQ(body.multiFacetRadiances()[0], 0.0F);
    render();
    EXPECT_NEAR(at(-0.75F, 0.5F), expected, 2e-3F * expected);
    EXPECT_EQ(at(0.5F, -0.75F), 0.0F);

    // Set up anew, or turned over with the eye going along, nothing changes; seen from below there is nothing.
    ASSERT_TRUE(init(body, folder));
    body.UpdateMultiFacet({0, 0, 1000, 1});
    EXPECT_NEAR(body.multiFacetRadiances()[1], expected, 2e-3F * expected);
    body.SetWorldPosAndOrientation(5, 6, 7, 0, 90, 0);
    body.UpdateMultiFacet({5 - 1000, 6, 7, 1});
    EXPECT_EQ(body.multiFacetRadiances()[1], 0.0F);
    body.UpdateMultiFacet({5 + 1000, 6, 7, 1});
    EXPECT_NEAR(body.multiFacetRadiances()[1], expected, 2e-3F * expected);

    // Off by choice, the form factors of the file stay.
    options.multiFacet = false;
    options.sky = 1.0F;
    ASSERT_TRUE(init(body, folder, options));
    body.SetWorldPosAndOrientation(0, 0, 0, 0, 0, 0);
    body.UpdateMultiFacet({0, 0, 1000, 1});
    EXPECT_EQ(body.multiFacetRadiances()[1], 0.0F);
    render();
    EXPECT_EQ(at(-0.75F, 0.5F), 0.0F);
}

TEST_F(HardbodyTest, AnInfiniteFacetIsWhiteAllOver) {
    writeTwoRectangles(folder);
    folder.write("body.rad", radBytes({std::numeric_limits<float>::infinity(), 2e5F, 3e5F, 4e5F}, {0, 0, 0, 0}));
    ASSERT_TRUE(init(body, folder, options));
    render();
    for (const float x : {-0.9F, -0.5F, -0.1F})
        EXPECT_GE(at(x, -0.95F), 1.0F) << x;
    EXPECT_NEAR(at(0.75F, -0.75F), 0.3F, 1e-5F);
}

TEST_F(HardbodyTest, LeavesTheStateOfOpenGlAsItWas) {
    writeTwoRectangles(folder);
    ASSERT_TRUE(init(body, folder));
    body.SetWorldPos(3, 4, 5);
    const std::vector<GLint> before = GlContext::state();
    render();
    EXPECT_EQ(GlContext::state(), before);
    body.Render(nullptr);
}

TEST_F(HardbodyTest, BodiesTooLargeFor16BitIndicesAreDrawnWhole) {
    // 200 x 100 rectangles with rising radiances, in two classes by rows of the grid.
    constexpr int kColumns = 200;
    constexpr int kRows = 100;
    Geometry geometry;
    std::vector<float> radiances;
    for (int row = 0; row <= kRows; ++row)
        for (int column = 0; column <= kColumns; ++column)
            geometry.addVertex(
                2.0F * static_cast<float>(column) / kColumns - 1.0F, 2.0F * static_cast<float>(row) / kRows - 1.0F,
                0.0F);
    for (int row = 0; row < kRows; ++row)
        for (int column = 0; column < kColumns; ++column) {
            const int corner = row * (kColumns + 1) + column + 1;
            geometry.addFacet(corner, corner + 1, corner + kColumns + 2);
            geometry.addFacet(corner, corner + kColumns + 2, corner + kColumns + 1);
            const float radiance = 1e6F * static_cast<float>(row * kColumns + column);
            radiances.insert(radiances.end(), {radiance, radiance});
        }
    ASSERT_EQ(geometry.facetCount, 40000);
    folder.write("body.vnl", geometry.text());
    folder.write("body.brdf", "BRDF\n2\n.2 .25 0 .3 0 x\n.2 .75 0 .3 0 x\n1 15000 2 x\n15001 40000 1 x\n");
    folder.write("body.rad", radBytes(radiances, radiances));
    ASSERT_TRUE(init(body, folder));
    render();
    for (int y = 0; y < kSize; y += 3)
        for (int x = 0; x < kSize; x += 3) {
            const int row = static_cast<int>((static_cast<float>(y) + 0.5F) / kSize * kRows);
            const int column = static_cast<int>((static_cast<float>(x) + 0.5F) / kSize * kColumns);
            const auto pixel = static_cast<std::size_t>(4 * (y * kSize + x));
            ASSERT_NEAR(pixels[pixel], static_cast<float>(row * kColumns + column), 0.5F) << x << " " << y;
        }
}

TEST_F(HardbodyTest, RotorsTurnWithTimeFromTheVerticesAsLoaded) {
    // The second rectangle is a blade on the right of the origin.
    Geometry geometry;
    geometry.addRectangle(-0.1F, 0.1F, -0.1F, 0.1F);
    geometry.addRectangle(0.25F, 0.9F, -0.2F, 0.2F);
    folder.write("body.vnl", geometry.text());
    // In class order the blade comes first.
    folder.write("body.brdf", "BRDF\n2\n0 0 0 0 0 x\n0 0 0 0 0 x\n1 2 2 x\n3 4 1 x\n");
    folder.write("body.rad", radBytes({2.5e5F, 2.5e5F, 5e5F, 5e5F}, {0, 0, 0, 0}));
    folder.write("body.rotor", "# blade, to a facet that isn't there\n3 9 0 0 0 0 0 1 0.25\n");
    options.rotors = true;
    options.perFrameUpload = true;
    options.rotorPath = folder.file("body.rotor");
    options.shaderDir = "/no/such/";
    EXPECT_EQ(reportOf([&] { ASSERT_TRUE(init(body, folder, options)); }), "");
    const std::pair<float, float> places[] = {{0.5F, 0.0F}, {0.0F, 0.5F}, {-0.5F, 0.0F}, {0.0F, -0.5F}};
    for (const std::size_t quarter : {0U, 1U, 2U, 3U, 1U}) {
        render(static_cast<float>(quarter));
        for (std::size_t place = 0; place < 4; ++place)
            EXPECT_NEAR(at(places[place].first, places[place].second), place == quarter ? 0.5F : 0.0F, 1e-6F)
                << quarter << " " << place;
        EXPECT_NEAR(at(0.0F, 0.0F), 0.25F, 1e-6F);
    }

    // A rotor ends where its line says: a quarter of a turn of the square alone shows nothing.
    folder.write("square.rotor", "1 2 0 0 0 0 0 1 0.25\n");
    options.rotorPath = folder.file("square.rotor");
    ASSERT_TRUE(init(body, folder, options));
    render(1.0F);
    EXPECT_NEAR(at(0.5F, 0.0F), 0.5F, 1e-6F);

    // Without a path no rotor file is read, although rotors are asked for.
    options.rotorPath.clear();
    ASSERT_TRUE(init(body, folder, options));
    render(1.0F);
    EXPECT_NEAR(at(0.5F, 0.0F), 0.5F, 1e-6F);
}

TEST_F(HardbodyTest, EachFaultInAFileMakesItUnusable) {
    for (
        const auto& [file, contents, report] : Rows<const char*, const char*, const char*>{
            {"body.brdf", "BRDX\n", "brdffile Load: Missing BRDF file signature on line 1."},
            {"body.rad", "", "radfile Load: Unexpected EOF while trying to read header."},
            {"body.vnl", "3 9\n",
             "vnlfile Load: Number of facets in VNL file, 9, does not match the number of facets in the BRDF file, 4."},
            {"body.sff-txt", "3\n1 0 0 0\n2 0 0 0\n3 0 0 0\n", "hardbody Init: Subfacet object initialization failed."},
            {"body.brdf", "BRDF\n1\n0 0 0 0 0 x\n1 500000000 1 x\n",
             "hardbody AllocateBuffers: Unable to allocate all the necessary arrays. Array address follow: vertices_ "
             "((nil)), normals_ ((nil)), primaryColors_ ((nil)), secondaryColors_ ((nil)), indices_ ((nil)), "
             "facetMap_ ((nil)), facetCentroids_ ((nil)), facetNormals_ ((nil)), multiFacetRadiances_ ((nil)), "
             "tempArray_ ((nil)), earth_form_factors_ ((nil)), sky_form_factors_ ((nil))."}}) {
        const TemporaryDirectory own; // what was read from a path stays known
        writeTwoRectangles(own);
        own.write(file, contents);
        EXPECT_EQ(reportOf([&] { EXPECT_FALSE(init(body, own)); }), report);
        EXPECT_FALSE(body.isUsable());
        render();
        EXPECT_EQ(at(0.5F, 0.5F), 0.0F);
        body.UpdateMultiFacet({0, 0, 9, 1});
        EXPECT_EQ(body.multiFacetRadiances(), nullptr);
        body.SetWorldPos(1, 2, 3);
        EXPECT_EQ(body.GetTransformedBBox()[6], Vector<float>(0, 0, 0, 1));
        EXPECT_EQ(body.BBox()[6], Vector<float>(0, 0, 0, 1));
        Rect<float> rect;
        EXPECT_FALSE(body.NearPlaneProjection(rect, Matrix<float>::identity(), 1.0F));
    }
}

TEST_F(HardbodyTest, WithoutBuffersInTheDriverItIsUnusable) {
    writeTwoRectangles(folder);
    const auto genBuffers = std::exchange(glGenBuffers, nullptr);
    EXPECT_EQ(reportOf([&] { EXPECT_FALSE(init(body, folder)); }), "hardbody Init: Vertex buffer creation failed.");
    Dynamic_Data data;
    body.Render(&data);
    glGenBuffers = genBuffers;
}

TEST_F(HardbodyTest, BoxesFollowThePose) {
    writeTwoRectangles(folder);
    ASSERT_TRUE(init(body, folder));
    EXPECT_EQ(body.BBox()[6], Vector<float>(1, 1, 1, 1));
    body.SetWorldPos(10, 0, -4);
    body.SetOrientation(0, 90, 90);
    const Vector<float> corner = body.GetTransformedBBox()[1]; // (1, -1, -1) turned about y, then z
    EXPECT_NEAR(corner.ElementAt(0), 11.0F, 1e-5F);
    EXPECT_NEAR(corner.ElementAt(1), -1.0F, 1e-5F);
    EXPECT_NEAR(corner.ElementAt(2), -5.0F, 1e-5F);

    Matrix<float> view = Matrix<float>::identity();
    view(0, 3) = -10.0F;
    EXPECT_EQ(body.Centroid(view), Vector<float>(0, 0, -4, 1));

    // The box reaches from 3 to 5 in front of the eye and a unit to each side.
    Rect<float> rect;
    ASSERT_TRUE(body.NearPlaneProjection(rect, view, 1.5F));
    for (const auto& [actual, expected] :
         {std::pair{rect.left, -0.5F}, {rect.right, 0.5F}, {rect.bottom, -0.5F}, {rect.top, 0.5F}})
        EXPECT_NEAR(actual, expected, 1e-5F);
    // With the near plane through it, the cut is as wide as the box.
    ASSERT_TRUE(body.NearPlaneProjection(rect, view, 4.0F));
    EXPECT_NEAR(rect.right, 1.0F, 1e-5F);
    const Rect<float> kept = rect;
    EXPECT_FALSE(body.NearPlaneProjection(rect, view, 5.5F));
    EXPECT_EQ(rect, kept);

    // Turned by 45 degrees only an edge of the box lies behind a near plane half-way between its middle and that edge.
    body.SetOrientation(0, 45, 0);
    const float half = std::numbers::sqrt2_v<float> / 2;
    ASSERT_TRUE(body.NearPlaneProjection(rect, view, 4 + half));
    EXPECT_NEAR(rect.left, -half, 1e-5F);
    EXPECT_NEAR(rect.right, half, 1e-5F);
}
