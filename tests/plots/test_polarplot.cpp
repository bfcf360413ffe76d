// Polar plots.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include <QImage>

#include "plotfile.h"
#include "polarplot.h"

using namespace sorvane;

namespace {
// One curve of eight values.
PolarDocument documentOf(std::vector<double> values) {
    return {QStringLiteral("title"), {{QStringLiteral("one"), std::move(values), 0, false}}};
}

// The middle of the curve's pixels within the plot, from the picture's middle: x to the right, y downwards.
QPointF middleOfCurve(const PolarDocument& document) {
    PolarPlot plot(document);
    QImage picture;
    EXPECT_TRUE(picture.loadFromData(plotPicture(plot, PlotFormat::Png, {400, 400})));
    const QColor colour = lightPlotTheme().curve(0);
    QPointF sum;
    int count = 0;
    for (int y = 40; y < 340; ++y) // above the legend
        for (int x = 0; x < 400; ++x) {
            const QColor pixel = picture.pixelColor(x, y);
            if (std::abs(pixel.red() - colour.red()) + std::abs(pixel.green() - colour.green()) +
                    std::abs(pixel.blue() - colour.blue()) <
                60) {
                sum += QPointF(x - 200, y - 200);
                ++count;
            }
        }
    EXPECT_GT(count, 0);
    return sum / std::max(count, 1);
}
} // namespace

TEST(PolarPlotTest, TheNoseIsUpAndTheRightIsRight) {
    const QPointF nose = middleOfCurve(documentOf({1, 0, 0, 0, 0, 0, 0, 0}));
    const QPointF right = middleOfCurve(documentOf({0, 0, 1, 0, 0, 0, 0, 0}));
    EXPECT_LT(nose.y(), -20.0);
    EXPECT_NEAR(nose.x(), 0.0, 12.0);
    EXPECT_GT(right.x(), 20.0);
    EXPECT_LT(middleOfCurve(documentOf({0, 0, 0, 0, 0, 0, 1, 0})).x(), -20.0);
    EXPECT_GT(middleOfCurve(documentOf({0, 0, 0, 0, 1, 0, 0, 0})).y(), nose.y() + 40.0);
}

TEST(PolarPlotTest, TheLegendNamesEachCurveOnce) {
    PolarDocument document = documentOf({1, 2, 3, 4});
    document.curves.push_back({QStringLiteral("another"), {4, 3, 2, 1}, 1, true});
    PolarPlot plot(document);
    const QByteArray svg = plotPicture(plot, PlotFormat::Svg, {400, 400});
    EXPECT_EQ(svg.count(">one<"), 1) << svg.toStdString();
    EXPECT_EQ(svg.count(">another<"), 1);
}

TEST(PolarPlotTest, TheRimHoldsTheLargestValue) {
    const double infinity = std::numeric_limits<double>::infinity();
    PolarDocument document = documentOf({1, infinity, 4, std::nan(""), -6, 0, 0, 0});
    const PolarPlot fromZero(document);
    EXPECT_EQ(fromZero.valueRange().lower, 0.0);
    EXPECT_GT(fromZero.valueRange().upper, 4.0);
    EXPECT_LT(fromZero.valueRange().upper, 4.5);
    document.isFromZero = false;
    const PolarPlot around(document);
    EXPECT_LT(around.valueRange().lower, -6.0);
    EXPECT_GT(around.valueRange().upper, 4.0);
    for (const PolarDocument& empty : {PolarDocument(), documentOf({}), documentOf({0, 0, 0, 0, 0, 0, 0, 0})}) {
        PolarPlot plot(empty);
        EXPECT_FALSE(plotPicture(plot, PlotFormat::Svg, {300, 300}).isEmpty());
    }
}
