// Coarser levels of radiances, and the texture that they and OpenGL fill together.
#include <cmath>
#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "glcontext.h"
#include "radiancelevels.h"
#include "tiletexture.h"

using namespace sorvane;

namespace {
using Function = std::function<double(double x, double y)>;

RadianceLevel levelOf(int columns, int rows, const Function& radiance) {
    RadianceLevel level{columns, rows, nullptr};
    level.radiances = std::make_unique<float[]>(level.count());
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < columns; ++x)
            level.radiances
                [static_cast<std::size_t>(y) * static_cast<std::size_t>(columns) + static_cast<std::size_t>(x)] =
                static_cast<float>(radiance(x, y));
    return level;
}

std::vector<float> texels(const TileTexture& texture, int level) {
    glBindTexture(GL_TEXTURE_2D, texture.name());
    GLint width = 0;
    GLint height = 0;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, level, GL_TEXTURE_WIDTH, &width);
    glGetTexLevelParameteriv(GL_TEXTURE_2D, level, GL_TEXTURE_HEIGHT, &height);
    std::vector<float> found(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    glGetTexImage(GL_TEXTURE_2D, level, GL_RED, GL_FLOAT, found.data());
    glBindTexture(GL_TEXTURE_2D, 0);
    return found;
}
} // namespace

// A slope is the same at every level: at a texel's centre it has what the slope has there.
TEST(RadianceLevels, ASlopeStaysOneToTheLastTexel) {
    for (const auto& [columns, rows] : {std::pair(1400, 1200), std::pair(1401, 1199), std::pair(1 << 21, 1)}) {
        const std::vector<RadianceLevel> levels =
            radianceLevels(levelOf(columns, rows, [](double x, double y) { return 0.5 * x + 3 * y; }));
        ASSERT_EQ(levels.size(), 2U) << columns;
        const RadianceLevel& half = levels[1];
        ASSERT_EQ(half.columns, columns / 2);
        ASSERT_EQ(half.rows, std::max(rows / 2, 1));
        for (int y = 0; y < half.rows; y += y < half.rows - 3 ? 7 : 1)
            for (int x = 0; x < half.columns; x += x < half.columns - 3 ? 11 : 1) {
                const double expected = 0.5 * ((x + 0.5) * columns / half.columns - 0.5) +
                                        (rows == 1 ? 0.0 : 3 * ((y + 0.5) * rows / half.rows - 0.5));
                ASSERT_NEAR(half.radiances[static_cast<std::size_t>(y * half.columns + x)], expected, 0.1)
                    << x << ' ' << y << " of " << columns;
            }
    }
}

TEST(RadianceLevels, AreHalvedUntilTheyAreSmall) {
    const auto sizes = [](int columns, int rows) {
        std::vector<int> found;
        for (const RadianceLevel& level : radianceLevels(levelOf(columns, rows, [](double, double) { return 1; })))
            found.push_back(level.columns);
        return found;
    };
    EXPECT_EQ(sizes(1024, 1024), std::vector({1024}));
    EXPECT_EQ(sizes(2050, 1025), std::vector({2050, 1025}));
    EXPECT_EQ(sizes(2050, 2050), std::vector({2050, 1025, 512}));
}

TEST(TileTexture, HasAllLevelsWhoeverMakesThem) {
    const GlContext context(8, 8);
    if (!context.isUsable())
        GTEST_SKIP() << "no OpenGL here";
    const auto waves = [](double x, double y) {
        return std::sin(x * 0.7) + std::cos(y * 0.3);
    };
    for (const auto& [columns, rows] : {std::pair(2048, 1024), std::pair(1303, 1101)}) {
        const std::vector<RadianceLevel> given = radianceLevels(levelOf(columns, rows, waves));
        ASSERT_EQ(given.size(), 2U);
        TileTexture ours(given);
        TileTexture openGls({given.data(), 1});
        while (!ours.isWhole())
            ours.addPiece(given);
        while (!openGls.isWhole())
            openGls.addPiece(given);
        for (int level = 0; level <= 11 - (columns < 2048); ++level) {
            const std::vector<float> found = texels(ours, level);
            const std::vector<float> expected = texels(openGls, level);
            ASSERT_EQ(found.size(), expected.size());
            ASSERT_FALSE(found.empty());
            double worst = 0.0;
            for (std::size_t i = 0; i < found.size(); ++i)
                worst = std::max(worst, std::abs(double{found[i]} - double{expected[i]}));
            EXPECT_LT(worst, 0.02) << columns << " level " << level;
        }
    }
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
