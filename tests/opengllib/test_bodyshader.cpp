// The body shader against the library's reflectance model, and each of its inputs by itself.
#include "bodyshader.h"

#include <cmath>
#include <limits>
#include <numbers>

#include "bodyfiles.h"
#include "brdffile.h"
#include "glcontext.h"
#include "rows.h"
#include "sandfordrobertson.h"

using namespace sorvane;

namespace {
constexpr int kSize = 16; // of the picture, which shows one point in each pixel
constexpr float kDepth = 2.0F;

const char* const kShaders = SORVANE_SHADERS;

float radians(float degrees) {
    return degrees * std::numbers::pi_v<float> / 180.0F;
}

Vector<float> unit(const Vector<float>& v) {
    return v / Length(v);
}

float dot(const Vector<float>& u, const Vector<float>& v) {
    return u.ElementAt(0) * v.ElementAt(0) + u.ElementAt(1) * v.ElementAt(1) + u.ElementAt(2) * v.ElementAt(2);
}

BrdfClass surface(float rho_d, float epsilon, float b, float e, int mode) {
    BrdfFile file;
    EXPECT_TRUE(file.parse("BRDF\n1\n0 0 " + std::to_string(b) + " 0 0 x\n"));
    return {rho_d, epsilon, b, e, file.classes()[0].G, mode};
}

// The point of pixel (column, row) in eye coordinates.
Vector<float> pointOf(int column, int row) {
    const auto place = [](int pixel) {
        return kDepth * (2.0F * (static_cast<float>(pixel) + 0.5F) / kSize - 1.0F);
    };
    return {place(column), place(row), -kDepth, 1.0F};
}

Vector<float> viewerOf(const Vector<float>& point) {
    return unit({-point.ElementAt(0), -point.ElementAt(1), -point.ElementAt(2), 0.0F});
}

// A normal tilted away from the viewer: the further, the higher the row, and towards all sides along a row.
Vector<float> normalOf(const Vector<float>& toViewer, int column, int row) {
    const float tilt = radians(static_cast<float>(row) * 6.0F);
    const float turn = radians(static_cast<float>(column) * 360.0F / kSize);
    const Vector<float> u = unit(Cross(toViewer, {0.0F, 1.0F, 0.0F, 0.0F}));
    const Vector<float> v = Cross(toViewer, u);
    Vector<float> normal;
    for (int i = 0; i < 3; ++i)
        normal.ElementAt(i) = std::cos(tilt) * toViewer.ElementAt(i) +
                              std::sin(tilt) * (std::cos(turn) * u.ElementAt(i) + std::sin(turn) * v.ElementAt(i));
    return normal;
}

struct Illumination {
    float earth = 0.0F, sky = 0.0F, solarBeam = 0.0F, brightness = 1.0F;
    float ownRadiance = 0.0F, emittance = 0.0F, multi = 0.0F, earthFormFactor = 0.0F, skyFormFactor = 0.0F;
};

// The red of every pixel.
std::vector<float>
draw(const GlContext& context, const BrdfClass& brdfClass, const Illumination& light, const Vector<float>& sun) {
    BodyShader shader;
    EXPECT_EQ(reportOf([&] { EXPECT_TRUE(shader.Init(kShaders)); }), "");
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glFrustum(-1.0, 1.0, -1.0, 1.0, 1.0, 10.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    shader.Activate();
    shader.setLight({light.earth, light.sky, light.solarBeam, light.brightness});
    shader.setSolarDirection(sun);
    shader.setClass(brdfClass);
    const auto attribute = [](int location, float value) {
        glVertexAttrib1f(static_cast<GLuint>(location), value);
    };
    glBegin(GL_POINTS);
    attribute(shader.attributes().multiFacetRadiance, light.multi);
    attribute(shader.attributes().earthFormFactor, light.earthFormFactor);
    attribute(shader.attributes().skyFormFactor, light.skyFormFactor);
    glColor3f(light.ownRadiance, light.ownRadiance, light.ownRadiance);
    glSecondaryColor3f(light.emittance, light.emittance, light.emittance);
    for (int row = 0; row < kSize; ++row)
        for (int column = 0; column < kSize; ++column) {
            const Vector<float> point = pointOf(column, row);
            const Vector<float> normal = normalOf(viewerOf(point), column, row);
            glNormal3f(normal.ElementAt(0), normal.ElementAt(1), normal.ElementAt(2));
            glVertex3f(point.ElementAt(0), point.ElementAt(1), point.ElementAt(2));
        }
    glEnd();
    BodyShader::Deactivate();
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));

    std::vector<float> red;
    const std::vector<float> pixels = context.pixels();
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        EXPECT_EQ(pixels[i], pixels[i + 1]);
        EXPECT_EQ(pixels[i], pixels[i + 2]);
        red.push_back(pixels[i]);
    }
    return red;
}

const Vector<float> kBehind(0.0F, 0.0F, -1.0F, 0.0F); // a sun that lights nothing
} // namespace

TEST(BodyShader, ReflectsTheSunAsTheLibrarySays) {
    const GlContext context(kSize, kSize);
    ASSERT_TRUE(context.isUsable());
    const BrdfClass surfaces[] = {surface(0.2F, 0.5F, 0.0F, 0.3F, 0),  surface(0.1F, 0.6F, 0.25F, 0.2F, 0),
                                  surface(0.3F, 0.3F, 0.5F, 0.5F, 1),  surface(0.1F, 0.1F, 2.0F, 0.3F, 0),
                                  surface(0.2F, 0.4F, 0.5F, 0.0F, 0),  surface(0.9F, 0.3F, 0.3F, 0.1F, 0),
                                  surface(0.25F, 0.4F, 0.7F, 0.3F, 2), surface(0.25F, 0.4F, 0.0F, 0.3F, 2),
                                  surface(0.25F, 0.4F, 0.7F, 0.3F, 3), surface(0.25F, 0.4F, 0.0F, 0.3F, 3)};
    const Vector<float> suns[] = {
        {0, 0, 1, 0}, unit({1, 0, 1, 0}), unit({-1, 2, 1, 0}), unit({0.2F, -3, 0.5F, 0}), unit({1, 1, -0.5F, 0})};
    Illumination light;
    light.solarBeam = 2.0F;
    light.brightness = 3.0F;
    int lit = 0;
    for (const BrdfClass& brdfClass : surfaces) {
        // A lobe of no width, 1 / (1 - cos²)², makes the rounding of the cosine visible.
        const float tolerance = brdfClass.e == 0.0F ? 2e-2F : 1e-3F;
        for (const Vector<float>& sun : suns) {
            const std::vector<float> picture = draw(context, brdfClass, light, sun);
            for (int row = 0; row < kSize; ++row)
                for (int column = 0; column < kSize; ++column) {
                    const Vector<float> toViewer = viewerOf(pointOf(column, row));
                    const Vector<float> normal = normalOf(toViewer, column, row);
                    const float cosSun = dot(normal, sun);
                    const float expected = light.brightness * std::numbers::pi_v<float> * light.solarBeam *
                                           std::max(cosSun, 0.0F) *
                                           sr_brdf_internal(
                                               brdfClass.mode, normal, sun, toViewer, brdfClass.b, brdfClass.e,
                                               brdfClass.rho_d, brdfClass.epsilon, brdfClass.G, unit(sun + toViewer));
                    const float actual = picture[static_cast<std::size_t>(row * kSize + column)];
                    ASSERT_NEAR(actual, expected, tolerance * expected + 1e-6F)
                        << "mode " << brdfClass.mode << " b " << brdfClass.b << " e " << brdfClass.e << " row " << row
                        << " column " << column << " sun " << sun.ElementAt(0) << " " << sun.ElementAt(1);
                    if (expected > 0.0F)
                        ++lit;
                }
        }
    }
    EXPECT_GT(lit, 4000);
}

TEST(BodyShader, AddsOwnRadianceAndOtherFacetsButNotTheEmittance) {
    const GlContext context(kSize, kSize);
    ASSERT_TRUE(context.isUsable());
    Illumination light;
    light.brightness = 3000.0F;
    light.ownRadiance = 4e-5F;
    light.multi = 1e-5F;
    light.emittance = 1.0F;
    for (const float value : draw(context, surface(0.2F, 0.5F, 0.3F, 0.3F, 0), light, kBehind))
        ASSERT_NEAR(value, 3000.0F * 5e-5F, 1e-6F);
    light.ownRadiance = 50.0F; // far above what colours hold
    for (const float value : draw(context, surface(0.2F, 0.5F, 0.3F, 0.3F, 0), light, kBehind))
        ASSERT_NEAR(value, 150000.0F, 1.0F);
}

TEST(BodyShader, ReflectsSkyAndEarthByFormFactorAndDirectionalEmissivity) {
    const GlContext context(kSize, kSize);
    ASSERT_TRUE(context.isUsable());
    Illumination light;
    light.earth = 0.5F;
    light.sky = 0.25F;
    light.earthFormFactor = 0.2F;
    light.skyFormFactor = 0.4F;
    for (const float b : {0.0F, 0.6F}) {
        const BrdfClass brdfClass = surface(0.2F, 0.5F, b, 0.3F, 0);
        const std::vector<float> picture = draw(context, brdfClass, light, kBehind);
        for (int row = 0; row < kSize; ++row) {
            const float tangent = std::tan(radians(6.0F * static_cast<float>(row))); // angle between normal and viewer
            const float emissivity = 0.5F / (1.0F + b * b * tangent * tangent) / brdfClass.G;
            const float expected = row == 15 && b > 0.0F ? 0.2F : 0.2F * (1.0F - emissivity);
            EXPECT_NEAR(picture[static_cast<std::size_t>(row * kSize + 3)], expected, 1e-5F) << b << " " << row;
        }
    }
}

TEST(BodyShader, InfiniteIsWhiteAndWhatIsNoNumberIsBlack) {
    const GlContext context(kSize, kSize);
    ASSERT_TRUE(context.isUsable());
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    for (const auto& [own, multi, sky, least, most] : Rows<float, float, float, float, float>{
             {kInfinity, 0.0F, 0.0F, 1.0F, 1e38F},
             {0.5F, kInfinity, 0.0F, 1.0F, 1e38F},
             {0.5F, 0.0F, kInfinity, 1.0F, 1e38F},
             {-kInfinity, 0.0F, 0.0F, -1e38F, 0.0F},
             {kNan, 0.0F, 0.0F, 0.0F, 0.0F},
             {0.5F, kNan, 0.0F, 0.5F, 0.5F},
             {0.5F, 0.0F, kNan, 0.0F, 0.0F}}) {
        Illumination light;
        light.ownRadiance = own;
        light.multi = multi;
        light.sky = sky;
        light.skyFormFactor = 1.0F;
        for (const float value : draw(context, surface(0.2F, 0.5F, 0.0F, 0.3F, 0), light, kBehind)) {
            ASSERT_GE(value, least) << own << ' ' << multi << ' ' << sky;
            ASSERT_LE(value, most) << own << ' ' << multi << ' ' << sky;
        }
    }
}
