// Plots of a set's columns: what they count, and brushing with the mouse.
#include <cmath>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QTest>

#include "histogramplot.h"
#include "rows.h"
#include "scatterplot.h"

using namespace sorvane;
using testing::Each;
using testing::ElementsAre;

namespace {
constexpr double kNothing = std::numeric_limits<double>::quiet_NaN();
using Values = std::vector<double>;

std::vector<double> evenly(int count, double from, double step) {
    Values values;
    for (int i = 0; i < count; ++i)
        values.push_back(from + step * i);
    return values;
}

TEST(Histogram, CountsByRoundSteps) {
    using Counts = std::vector<std::size_t>;
    for (const auto& [values, low, width, counts] : Rows<Values, double, double, Counts>{
             {{}, 0.0, 1.0, {}},
             {{kNothing, 3.0, std::numeric_limits<double>::infinity()}, 2.5, 1.0, {1}},
             {{1.0, 0.0, 1.0, 1.0}, -0.5, 1.0, {1, 3}},                        // whole numbers: their own steps
             {{0.25, 0.25}, 0.25, 5.0e-10, {2}},                               // no spread at all
             {evenly(8, 0.05, 0.1), 0.0, 0.2, {2, 2, 2, 2}},                   // 0.7 / 4 is less than 2 · 0.3 / 8^⅓
             {evenly(64, 0.005, 0.01), 0.0, 0.1, {10, 10, 10, 10, 10, 10, 4}}, // 0.63 / 7 than 2 · 0.31 / 4
             {{0.0, 5.1, 5.1, 5.1, 5.2, 5.9, 6.0, 9.9}, 0.0, 1.0, {1, 0, 0, 0, 0, 5, 1, 0, 0, 1}}, // 2 · 0.8 / 2
             {{1.5, 1.5, 9.5, 9.5}, 0.0, 5.0, {2, 2}},                                             // far apart
             {{0.0, 0.5, 1.0}, 0.0, 0.5, {1, 2}}}) { // the last step has its upper end
        const Histogram histogram = histogramOf(values);
        EXPECT_EQ(histogram.counts, counts) << testing::PrintToString(values);
        EXPECT_NEAR(histogram.low, low, 1e-9) << testing::PrintToString(values);
        EXPECT_NEAR(histogram.width, width, 1e-12) << testing::PrintToString(values);
    }
    Values outlier = evenly(1000, 0.0, 0.001);
    outlier.push_back(1.0e6);
    EXPECT_LE(histogramOf(outlier).counts.size(), 501U);
    EXPECT_LT(mostOf(outlier).second, 1.0);
    EXPECT_EQ(mostOf(evenly(1000, 0.0, 0.001)).second, 0.999) << "nothing is far away";
    const Values values = {0.0, 0.0, 1.0, 2.0};
    EXPECT_THAT(countMarked(histogramOf(values), values, std::vector<std::uint8_t>{1, 0, 0, 1}), ElementsAre(1, 0, 1));
}

// A plot of 400 by 300 pixels on the screen.
template <class Plot> struct Shown {
    Plot plot;
    std::optional<QRectF> brushed;
    int brushings = 0;

    Shown() {
        plot.resize(400, 300);
        plot.onBrushed([this](const std::optional<QRectF>& area) {
            brushed = area;
            ++brushings;
        });
    }
    void show() {
        plot.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&plot));
        plot.replot(QCustomPlot::rpImmediateRefresh);
    }
    QPoint at(double x, double y) {
        return QPointF(plot.xAxis->coordToPixel(x), plot.yAxis->coordToPixel(y)).toPoint();
    }
    void drag(QPoint from, QPoint to) {
        QTest::mousePress(&plot, Qt::LeftButton, {}, from);
        for (const QPoint& place : {(from + to) / 2, to}) {
            QMouseEvent move(
                QEvent::MouseMove, place, plot.mapToGlobal(place), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&plot, &move);
        }
        QTest::mouseRelease(&plot, Qt::LeftButton, {}, to);
    }
    QRgb colourAt(double x, double y) {
        const QPoint place = at(x, y);
        return plot.toPixmap().toImage().pixel(place);
    }
};

TEST(SetPlots, ADragBrushesWhatItCoversAndAClickEndsThat) {
    Shown<ScatterPlot> shown;
    shown.plot.setColumns({"x", {0.0, 10.0, 5.0}, {}}, {"y", {0.0, 100.0, kNothing}, {}});
    shown.show();
    for (const auto& [from, to] :
         Rows<QPoint, QPoint>{{shown.at(2.0, 80.0), shown.at(8.0, 20.0)}, {shown.at(8.0, 20.0), shown.at(2.0, 80.0)}}) {
        shown.brushed.reset();
        shown.drag(from, to);
        ASSERT_TRUE(shown.brushed);
        EXPECT_NEAR(shown.brushed->left(), 2.0, 0.1);
        EXPECT_NEAR(shown.brushed->right(), 8.0, 0.1);
        EXPECT_NEAR(shown.brushed->top(), 20.0, 1.0) << "the lesser value";
        EXPECT_NEAR(shown.brushed->bottom(), 80.0, 1.0);
    }
    QTest::mouseClick(&shown.plot, Qt::LeftButton, {}, shown.at(5.0, 50.0));
    EXPECT_FALSE(shown.brushed);
    EXPECT_EQ(shown.brushings, 3);
}

TEST(SetPlots, MarkedRowsStandOut) {
    Shown<ScatterPlot> scatter;
    scatter.plot.setColumns({"x", {1.0, 2.0, 1.5}, {}}, {"y", {1.0, 2.0, kNothing}, {}});
    scatter.show();
    EXPECT_EQ(scatter.colourAt(1.0, 1.0), lightPlotTheme().curve(0).rgb());
    EXPECT_EQ(scatter.colourAt(1.37, 1.63), lightPlotTheme().background.rgb());
    scatter.plot.setMarks(std::vector<std::uint8_t>{0, 1, 0});
    EXPECT_EQ(scatter.colourAt(2.0, 2.0), lightPlotTheme().curve(1).rgb());
    EXPECT_NE(scatter.colourAt(1.0, 1.0), lightPlotTheme().curve(0).rgb()) << "the others step back";
    scatter.plot.setTheme(darkPlotTheme());
    EXPECT_EQ(scatter.colourAt(1.37, 1.63), darkPlotTheme().background.rgb());

    Shown<HistogramPlot> histogram;
    histogram.plot.setColumn({"x", {0.0, 0.0, 0.0, 0.0, 1.0}, {}});
    histogram.show();
    histogram.plot.setMarks(std::vector<std::uint8_t>{1, 1, 0, 0, 0});
    EXPECT_EQ(histogram.colourAt(0.0, 1.0), lightPlotTheme().curve(1).rgb()) << "two of four";
    EXPECT_NE(histogram.colourAt(0.0, 3.0), lightPlotTheme().curve(1).rgb());
    EXPECT_NE(histogram.colourAt(0.0, 3.0), lightPlotTheme().background.rgb());
    EXPECT_NE(histogram.colourAt(1.0, 0.5), lightPlotTheme().curve(1).rgb());
}

TEST(SetPlots, AnEmptyColumnAndOneOfTextsAreDrawn) {
    Shown<HistogramPlot> histogram;
    histogram.plot.setColumn({"x", {kNothing, kNothing}, {}});
    histogram.show();
    EXPECT_TRUE(histogram.plot.histogram().counts.empty());
    histogram.plot.setColumn({"pattern", {0.0, 1.0, 1.0}, {"A", "B"}});
    histogram.plot.replot();
    EXPECT_THAT(
        histogram.plot.xAxis->ticker().dynamicCast<QCPAxisTickerText>()->ticks().values(), ElementsAre("A", "B"));
    // The wheel zooms; a double click shows all again.
    const QCPRange all = histogram.plot.xAxis->range();
    histogram.plot.xAxis->setRange(0.2, 0.4);
    QTest::mouseDClick(&histogram.plot, Qt::LeftButton, {}, QPoint(200, 100));
    EXPECT_EQ(histogram.plot.xAxis->range(), all);
}
} // namespace
