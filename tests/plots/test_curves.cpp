// Curves of measures, the points of them that are drawn, and what is read off them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "curvevalue.h"
#include "plottedpass.h"
#include "thinning.h"

using namespace sorvane;
using testing::ElementsAre;

namespace {
constexpr double kGap = std::numeric_limits<double>::quiet_NaN();

std::vector<PlotPoint> thinned(const std::vector<PlotPoint>& line, const TimeRange& range, int columns) {
    std::vector<PlotPoint> points;
    appendThinned(line, range, columns, points);
    return points;
}

std::vector<double> valuesOf(const std::vector<PlotPoint>& points) {
    std::vector<double> values;
    for (const PlotPoint& point : points)
        values.push_back(point.value);
    return values;
}

std::vector<const Measure*> measuresOf(std::initializer_list<const char*> names) {
    std::vector<const Measure*> measures;
    for (const char* const name : names)
        measures.push_back(findMeasure(name));
    return measures;
}
} // namespace

// However the view lies, each column of pixels reaches as far up and down as all of its points do.
TEST(Thinning, LosesNoSpikeAtAnyZoom) {
    constexpr int kPoints = 100000;
    constexpr int kColumns = 300;
    std::mt19937 random(7);
    std::uniform_real_distribution<double> anywhere(0.0, 1.0);
    std::vector<PlotPoint> line;
    for (int i = 0; i < kPoints; ++i)
        line.push_back({i * 0.001, std::sin(i * 0.0003)});
    for (int i = 0; i < 40; ++i)
        line[static_cast<std::size_t>(anywhere(random) * kPoints)].value = i % 2 == 0 ? 50.0 + i : -50.0 - i;
    line[50000].value = kGap;
    for (int turn = 0; turn < 200; ++turn) {
        const double begin = 100.0 * anywhere(random);
        const TimeRange range{begin, begin + std::pow(10.0, 3.0 * anywhere(random) - 1.0)};
        std::vector<std::pair<double, double>> extents(kColumns, {1.0e9, -1.0e9});
        const auto addTo = [&](std::vector<std::pair<double, double>>& columns, const PlotPoint& point) {
            const double column = std::floor((point.time - range.begin) * (kColumns / (range.end - range.begin)));
            if (point.time < range.begin || point.time > range.end || column >= kColumns || std::isnan(point.value))
                return;
            auto& [least, greatest] = columns[static_cast<std::size_t>(column)];
            least = std::min(least, point.value);
            greatest = std::max(greatest, point.value);
        };
        for (const PlotPoint& point : line)
            addTo(extents, point);
        const std::vector<PlotPoint> shown = thinned(line, range, kColumns);
        std::vector<std::pair<double, double>> shownExtents(kColumns, {1.0e9, -1.0e9});
        // Ends that were cut lie between points that are not all in view.
        const std::size_t end = shown.size() - (range.end < line.back().time ? 1 : 0);
        for (std::size_t i = 1; i < end; ++i)
            addTo(shownExtents, shown[i]);
        for (std::size_t column = 1; column + 1 < extents.size(); ++column)
            ASSERT_EQ(shownExtents[column], extents[column]) << "column " << column << " from " << begin;
        ASSERT_LE(shown.size(), 4U * kColumns + 4U);
        ASSERT_TRUE(std::ranges::is_sorted(shown, {}, &PlotPoint::time));
    }
}

TEST(Thinning, CutsAtTheEndsAndKeepsGaps) {
    const std::vector<PlotPoint> line = {{0.0, 0.0}, {1.0, 10.0}, {2.0, 20.0}, {3.0, kGap}, {4.0, 40.0}, {5.0, 50.0}};
    EXPECT_THAT(valuesOf(thinned(line, {0.5, 1.5}, 100)), ElementsAre(5.0, 10.0, 15.0));
    EXPECT_THAT(valuesOf(thinned(line, {1.25, 1.5}, 100)), ElementsAre(12.5, 15.0)) << "no point lies within";
    EXPECT_THAT(valuesOf(thinned(line, {-3.0, 1.0}, 100)), ElementsAre(0.0, 10.0, 10.0));
    EXPECT_THAT(valuesOf(thinned(line, {6.0, 7.0}, 100)), ElementsAre());
    EXPECT_THAT(valuesOf(thinned(line, {-2.0, -1.0}, 100)), ElementsAre());
    const std::vector<double> withGap = valuesOf(thinned(line, {0.0, 5.0}, 1)); // more points than columns hold
    EXPECT_THAT(withGap, ElementsAre(0.0, 20.0, testing::IsNan(), 40.0, 50.0));
}

TEST(CurveValue, IsLinearBetweenPointsAndNothingElsewhere) {
    PlotCurve curve;
    curve.points = {{1.0, 10.0}, {2.0, 20.0}, {3.0, kGap}, {4.0, 40.0}, /*next line*/ {2.5, 7.0}, {3.5, 9.0}};
    curve.ends = {4, 6};
    const std::pair<double, std::optional<double>> rows[] = {
        {0.9, std::nullopt}, {1.0, 10.0}, {1.25, 12.5},        {2.0, 20.0}, {2.2, std::nullopt},
        {3.0, 8.0},          {3.5, 9.0},  {3.6, std::nullopt}, {4.0, 40.0}, {4.1, std::nullopt}};
    for (const auto& [time, value] : rows)
        EXPECT_EQ(valueOf(curve, time), value) << time;
}

TEST(MeasureCurves, UsualStripsOfAPass) {
    const PlottedPass pass({{7, samplesFrom(20, 40)}, {9, samplesFrom(30, 35)}});
    const PlotDocument plot = plotOf(std::vector{pass.plotted()}, usualPlotMeasures());
    std::vector<std::string> found;
    for (const PlotStrip& strip : plot.strips) {
        std::string text = strip.title.toStdString() + " (" + strip.unit.toStdString() + "):";
        for (const PlotCurve& curve : strip.curves)
            text += " " + curve.name.toStdString() + (curve.isDashed ? " dashed" : "") + " " +
                    std::to_string(curve.points.size());
        found.push_back(text);
    }
    EXPECT_THAT(
        found, ElementsAre(
                   "range (units): range 101", "closing-speed (units/s): closing-speed 101",
                   "off-boresight (°): target 101 flare 7 20 flare 9 5 half-field dashed 101",
                   "flare-band-1 (): flare 7 20 flare 9 5"));
    EXPECT_EQ(plot.times.end, 10.0);
    EXPECT_NEAR(valueOf(plot.strips[0].curves[0], 5.0).value_or(0.0), 40.0, 1e-12);
    EXPECT_EQ(valueOf(plot.strips[3].curves[0], 2.5), 7.0 + 25.0);
    EXPECT_EQ(plot.strips[2].greatest, 8.0) << "four half fields";
    EXPECT_NE(plot.strips[2].curves[1].colour, plot.strips[2].curves[0].colour);
    EXPECT_EQ(plot.strips[2].curves[1].colour, plot.strips[3].curves[0].colour) << "a flare has one colour";
}

TEST(MeasureCurves, AFlareThatComesBackHasAGap) {
    const PlottedPass pass({{7, {20, 21, 22, 30, 31}}});
    const PlotCurve curve =
        plotOf(std::vector{pass.plotted()}, measuresOf({"flare-age"})).strips.front().curves.front();
    EXPECT_THAT(valuesOf(curve.points), testing::SizeIs(6));
    EXPECT_EQ(valueOf(curve, 2.2), 0.2 + 2.2 - 2.2);
    EXPECT_EQ(valueOf(curve, 2.6), std::nullopt);
    EXPECT_NEAR(valueOf(curve, 3.1).value_or(-1.0), 0.1, 1e-12);
}

TEST(MeasureCurves, ManyFlaresAreOneCurve) {
    PlottedPass::Flares flares;
    for (int id = 1; id <= 13; ++id)
        flares.push_back({id, samplesFrom(10, 20)});
    const PlottedPass pass(flares);
    const PlotStrip strip = plotOf(std::vector{pass.plotted()}, measuresOf({"flare-band-1"})).strips.front();
    ASSERT_THAT(strip.curves, testing::SizeIs(1));
    EXPECT_EQ(strip.curves[0].name, QStringLiteral("13 flares"));
    EXPECT_EQ(strip.curves[0].lineCount(), 13U);
    EXPECT_EQ(strip.curves[0].line(12).front().value, 13.0 + 10.0);
}

TEST(MeasureCurves, AlignsSeveralEngagements) {
    const PlottedPass pass({{7, samplesFrom(20, 40)}});
    const PlottedPass without;
    const struct {
        PlotAlignment alignment;
        double begin, end, mark;
    } rows[] = {
        {PlotAlignment::Start, 0.0, 10.0, 2.0},
        {PlotAlignment::FirstFlare, -2.0, 10.0, 0.0}, // the second one has no flare and stays
        {PlotAlignment::ClosestApproach, -5.0, 5.0, -3.0}};
    for (const auto& row : rows) {
        const PlotDocument plot =
            plotOf(std::vector{pass.plotted("a"), without.plotted("b")}, measuresOf({"range"}), row.alignment);
        EXPECT_NEAR(plot.times.begin, row.begin, 1e-9);
        EXPECT_NEAR(plot.times.end, row.end, 1e-9);
        EXPECT_NEAR(plot.marks.at(0).time, row.mark, 1e-9);
        EXPECT_EQ(plot.strips[0].curves[0].name, QStringLiteral("a: range"));
        EXPECT_EQ(plot.strips[0].curves[1].name, QStringLiteral("b: range"));
        EXPECT_TRUE(plot.strips[0].curves[1].isDashed);
    }
}

TEST(MeasureCurves, NothingToPlot) {
    EXPECT_TRUE(plotOf({}, usualPlotMeasures()).strips.empty());
    SampleSeries one;
    one.add({.time = 3.0}, {});
    one.putInOrder();
    const MeasuredEngagement measured(one, 2.0F);
    const PlotDocument plot = plotOf(std::vector<PlottedEngagement>{{"one", &measured, {}}}, usualPlotMeasures());
    EXPECT_EQ(plot.times.begin, 3.0);
    EXPECT_TRUE(std::isnan(plot.strips[1].curves[0].points[0].value)) << "a single sample has no speed";
}
