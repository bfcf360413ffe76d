// What the colours of a scaled picture stand for, and what shows at its pixels.
#include "radiancescene.h"

#include "colourbar.h"
#include "rows.h"
#include "scaledframe.h"

using namespace sorvane;

TEST(ScaleEnds, AutomaticOnesArePercentiles) {
    std::vector<float> evenly;
    for (int i = 0; i <= 1000; ++i)
        evenly.push_back(static_cast<float>(1000 - i) * 1e-6F);
    const ScaleEnds ends = automaticEnds(evenly, 0.0F);
    EXPECT_NEAR(ends.black, 20e-6, 1e-10);
    EXPECT_NEAR(ends.white, 998e-6, 1e-10);
    const float nan = std::nanf("");
    for (const auto& [radiances, expected] : Rows<std::vector<float>, ScaleEnds>{
             {{}, {}},
             {{0.0F, 0.0F}, {}},
             {{nan, -1.0F}, {}},
             {{nan, 0.25F, 0.25F, 0.25F, 0.25F, 0.25F, 0.25F, 0.25F, 0.25F}, {0.0, 0.25}}, // all alike: from black
             {std::vector<float>(9, 0.1F), {0.0, double{0.1F}}},
         })
        EXPECT_EQ(automaticEnds(radiances, 0.0F), expected);
    // Of a body of a few pixels, with the sky: so that the sky stays black when a second pixel comes.
    for (const auto& [radiances, sky, black, white] : Rows<std::vector<float>, float, double, double>{
             {{5e-5F}, 1e-5F, 1e-5, 5e-5},
             {{4e-5F, 5e-5F}, 1e-5F, 1e-5, 5e-5},
             {{5e-5F}, 9e-5F, 5e-5, 9e-5},
             {std::vector<float>(7, 5e-5F), 1e-5F, 1e-5, 5e-5}}) {
        const ScaleEnds found = automaticEnds(radiances, sky);
        EXPECT_NEAR(found.black, black, 0.21 * (white - black)) << radiances.size();
        EXPECT_NEAR(found.white, white, 0.02 * (white - black)) << radiances.size();
    }
}

TEST(Palette, GoesFromTheLeastToTheGreatest) {
    for (const auto& [palette, first, middle, last] : Rows<Palette, QRgb, QRgb, QRgb>{
             {Palette::Grey, 0xFF000000, 0xFF808080, 0xFFFFFFFF},
             {Palette::Inverted, 0xFFFFFFFF, 0xFF7F7F7F, 0xFF000000},
             {Palette::Viridis, 0xFF440154, 0xFF21918C, 0xFFFDE725},
             {Palette::Inferno, 0xFF000004, 0xFFBC3754, 0xFFFCFFA4}}) {
        const auto colours = coloursOf(palette);
        const ScaleEnds ends{1e-4, 3e-4};
        EXPECT_EQ(colourOf(1e-4, ends, colours), first);
        EXPECT_EQ(colourOf(-1.0, ends, colours), first);
        EXPECT_EQ(colourOf(std::nan(""), ends, colours), first);
        EXPECT_EQ(colourOf(3e-4, ends, colours), last);
        EXPECT_EQ(colourOf(9.0, ends, colours), last);
        const QRgb found = colourOf(2e-4, ends, colours);
        EXPECT_NEAR(qRed(found), qRed(middle), 2) << nameOf(palette).option;
        EXPECT_NEAR(qGreen(found), qGreen(middle), 2) << nameOf(palette).option;
        EXPECT_NEAR(qBlue(found), qBlue(middle), 2) << nameOf(palette).option;
    }
    // The lightness L* rises evenly, inferno's by another formula of it.
    for (const auto& [palette, tolerance] : Rows<Palette, double>{{Palette::Viridis, 2.0}, {Palette::Inferno, 5.5}}) {
        const auto colours = coloursOf(palette);
        const auto linear = [](int channel) {
            const double value = channel / 255.0;
            return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
        };
        const auto lightness = [&](QRgb colour) {
            const double luminance =
                0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
            return luminance > 0.008856 ? 116.0 * std::cbrt(luminance) - 16.0 : 903.3 * luminance;
        };
        const double first = lightness(colours.front());
        const double last = lightness(colours.back());
        for (std::size_t i = 0; i < colours.size(); ++i)
            EXPECT_NEAR(lightness(colours[i]), first + (last - first) * static_cast<double>(i) / 255.0, tolerance) << i;
    }
}

TEST(ColourBar, HasRoundNumbersBetweenItsEnds) {
    for (const auto& [ends, most, expected] : Rows<ScaleEnds, int, std::vector<double>>{
             {{0.0, 1.0 / 3000.0}, 4, {0.0, 1e-4, 2e-4, 3e-4}},
             {{2.1e-5, 9.0e-5}, 7, {3e-5, 4e-5, 5e-5, 6e-5, 7e-5, 8e-5, 9e-5}},
             {{0.0, 5.0}, 3, {0.0, 2.0, 4.0}},
             {{0.0, 0.0}, 5, {}},
             {{1.0, std::nan("")}, 5, {}}}) {
        const std::vector<double> ticks = barTicks(ends, most);
        ASSERT_EQ(ticks.size(), expected.size()) << ends.white;
        for (std::size_t i = 0; i < ticks.size(); ++i)
            EXPECT_NEAR(ticks[i], expected[i], 1e-9 * ends.white);
    }
    for (const auto& [ticks, texts] : Rows<std::vector<double>, QStringList>{
             {{0.0, 1e-4, 2e-4}, {"0", "1.0e-04", "2.0e-04"}},
             {{9.5e-5, 1e-4, 1.05e-4}, {"9.50e-05", "1.00e-04", "1.05e-04"}},
             {{1.2340e-3, 1.2342e-3}, {"1.2340e-03", "1.2342e-03"}},
             {{2.0}, {"2.0e+00"}},
             {{}, {}}})
        EXPECT_EQ(barTexts(ticks), texts);
}

namespace {
struct ScaledFrameTest : RadianceFrameTest {
    Scene lines;
    ScaledFrame scaled;
    SceneOptions options{.showHistoryLines = false, .showGrid = false};
    ScaledRequest asked{.scale = {.range = PictureScale::Range::Chosen, .white = 4e-4}, .width = 64, .height = 64};

    std::vector<SceneEngagement> shown() {
        std::vector<SceneEngagement> all;
        for (std::size_t i = 0; i < engagements.size(); ++i)
            all.push_back({EngagementId{static_cast<std::uint32_t>(i) + 1}, &engagements[i]});
        return all;
    }
    QImage picture(const Camera& camera) {
        asked.followed = EngagementId{1};
        applyProjection(asked.fieldOfViewDegrees, asked.width, asked.height);
        const auto drawn = scaled.draw(lines, shown(), camera, options, asked);
        EXPECT_TRUE(drawn);
        return drawn ? drawn->picture : QImage();
    }
    PointedRadiance at(const Camera& camera, int column, int row) {
        const auto pointed = scaled.at(column, row, shown(), camera, options, asked);
        EXPECT_TRUE(pointed);
        return pointed.value_or(PointedRadiance{});
    }
};
} // namespace

TEST_F(ScaledFrameTest, GreysStandForRadiances) {
    // A plate of a quarter of the picture's height in the middle, and a brighter flare at the side.
    place(0, {plate(13.4, 13.4), 1e-4, "0.2 0.5 0 0.3 0 x", {}}, kPlace);
    const Camera camera = cameraBeside(100.0, 0.0, 0.0);
    EXPECT_EQ(picture(camera).pixel(32, 32), qRgb(64, 64, 64)) << "1e-4 of 4e-4: 63.75";
    EXPECT_EQ(picture(camera).pixel(4, 4), qRgb(0, 0, 0));
    asked.scale.palette = Palette::Inverted;
    EXPECT_EQ(picture(camera).pixel(32, 32), qRgb(191, 191, 191));
    EXPECT_EQ(picture(camera).pixel(4, 4), qRgb(255, 255, 255));
    asked.scale = {.range = PictureScale::Range::Automatic};
    EXPECT_EQ(picture(camera).pixel(32, 32), qRgb(255, 255, 255)) << "all of the followed body is alike";
    // Neither flares nor bodies of others count for the scale.
    placeFlare({kPlace[0] + 10.0F, kPlace[1] + 18.0F, kPlace[2]}, 8500.0F, {3.0F, 3.0F, 3.0F});
    EXPECT_EQ(picture(camera).pixel(32, 32), qRgb(255, 255, 255));
    engagements[0].keyframes.first().flares = engagements[1].keyframes.first().flares;
    EXPECT_EQ(picture(camera).pixel(32, 32), qRgb(255, 255, 255));
}

TEST_F(ScaledFrameTest, LinesLieOverAndBehindAsEver) {
    place(0, {plate(13.4, 13.4), 2e-4, "0.2 0.5 0 0.3 0 x", {}}, {0.0F, 0.0F, -5.0F});
    options.showGrid = true;
    asked.scale.white = 3e-4;
    const Camera camera = cameraAt(Vector<float>(60.0F, 1.0F, -15.0F, 1.0F), Vector<float>(0.0F, 1.0F, -5.0F, 1.0F));
    applyProjection(asked.fieldOfViewDegrees, asked.width, asked.height);
    QImage ordinary = scene.draw(shown(), camera, options);
    asked.width = ordinary.width();
    asked.height = ordinary.height();
    const QImage scaledPicture = picture(camera);
    int lined = 0;
    int plated = 0;
    int mixed = 0; // at the plate's edge, means over pixels
    for (int y = 0; y < ordinary.height(); ++y)
        for (int x = 0; x < ordinary.width(); ++x) {
            const QRgb there = ordinary.pixel(x, y);
            const bool isGrey = qRed(there) == qGreen(there) && qGreen(there) == qBlue(there);
            if (isGrey && qRed(there) == 153) { // 2e-4 × 3000
                ++plated;
                mixed += scaledPicture.pixel(x, y) == qRgb(170, 170, 170) ? 0 : 1;
            } else if (!isGrey) {
                ++lined;
                EXPECT_EQ(scaledPicture.pixel(x, y), there) << x << ' ' << y;
            }
        }
    EXPECT_GT(plated, 1000);
    EXPECT_LT(mixed, plated / 10);
    EXPECT_GT(lined, 20);
}

TEST_F(ScaledFrameTest, TellsWhatShowsAtAPixel) {
    PlainBody sunlit{plate(13.4, 13.4), 1e-4, "0.2 0.5 0.25 0.3 0 x", {}};
    sunlit.light = {.earthRadiance = 1e-5F, .skyRadiance = 3e-5F, .solarBeam = 0.0F};
    place(0, sunlit, kPlace);
    placeFlare({kPlace[0] + 10.0F, kPlace[1] + 18.0F, kPlace[2]}, 850.0F, {3.0F, 3.0F, 3.0F});
    engagements[1].keyframes.first().flares[0].id = 7;
    const Camera camera = cameraBeside(100.0, 0.0, 0.0);
    // The plate's diagonal goes from its lower left to its upper right, seen from the front: +y is on the left there.
    const PointedRadiance facet = at(camera, 32, 28);
    EXPECT_EQ(facet.picked.thing, Picked::Thing::Target);
    EXPECT_EQ(facet.picked.engagement, EngagementId{1});
    EXPECT_EQ(facet.picked.surfaceClass, 0);
    const PointedRadiance other = at(camera, 32, 36);
    EXPECT_NE(facet.picked.number, other.picked.number);
    EXPECT_EQ(facet.picked.number + other.picked.number, 3);
    ASSERT_TRUE(facet.parts);
    EXPECT_NEAR(facet.parts->own, 1e-4, 1e-10);
    EXPECT_NEAR(facet.parts->sun, 0.0, 1e-12);
    EXPECT_GT(facet.parts->skyAndEarth, 1e-6);
    EXPECT_NEAR(facet.parts->otherFacets, 0.0, 1e-10);
    EXPECT_NEAR(
        facet.parts->own + facet.parts->sun + facet.parts->skyAndEarth + facet.parts->otherFacets, facet.radiance,
        1e-12);

    bool isFlareMet = false;
    for (int column = 0; column < 64 && !isFlareMet; ++column) {
        const PointedRadiance pointed = at(camera, column, 32);
        if (pointed.picked.thing != Picked::Thing::Flare)
            continue;
        isFlareMet = true;
        EXPECT_EQ(pointed.picked.number, 7);
        EXPECT_EQ(pointed.picked.engagement, EngagementId{2});
        // 850 / (π · 300² cm²)
        EXPECT_NEAR(pointed.radiance, 3.00626e-3, 1e-7);
        EXPECT_FALSE(pointed.parts);
    }
    EXPECT_TRUE(isFlareMet);
    const PointedRadiance sky = at(camera, 3, 3);
    EXPECT_EQ(sky.picked.thing, Picked::Thing::Sky);
    EXPECT_EQ(sky.radiance, 0.0);
    // Another engagement's body behind, which is looked at later.
    place(1, sunlit, {kPlace[0] - 5.0F, kPlace[1], kPlace[2]});
    EXPECT_EQ(at(camera, 32, 28).picked.engagement, EngagementId{1});
}
