// Plots as files.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include <QImage>
#include <QRegularExpression>
#include <QThread>

#include "plotfile.h"
#include "plottedpass.h"
#include "stripplot.h"

using namespace sorvane;

namespace {
PlotDocument passPlot() {
    const PlottedPass pass({{7, samplesFrom(20, 40)}});
    return plotOf(std::vector{pass.plotted()}, usualPlotMeasures());
}

QByteArray fileOf(PlotFormat format, const QSize& size = {640, 480}) {
    if (format == PlotFormat::Csv)
        return plotTable(passPlot(), {0.0, 10.0});
    StripPlot plot;
    plot.setDocument(passPlot());
    return plotPicture(plot, format, size);
}
} // namespace

TEST(PlotFile, NamesTellTheFormat) {
    EXPECT_EQ(plotFormatOf("a/b.PNG"), PlotFormat::Png);
    EXPECT_EQ(plotFormatOf("b.x.svg"), PlotFormat::Svg);
    EXPECT_EQ(plotFormatOf("b.pdf"), PlotFormat::Pdf);
    EXPECT_EQ(plotFormatOf("b.csv"), PlotFormat::Csv);
    EXPECT_EQ(plotFormatOf("b.jpg"), std::nullopt);
    EXPECT_EQ(plotFormatOf("png"), std::nullopt);
}

TEST(PlotFile, TheSamePlotGivesTheSameBytes) {
    const std::pair<PlotFormat, const char*> rows[] = {
        {PlotFormat::Png, "\x89PNG"}, {PlotFormat::Svg, "<?xml"}, {PlotFormat::Pdf, "%PDF"}, {PlotFormat::Csv, "meas"}};
    std::vector<QByteArray> first;
    for (const auto& [format, begin] : rows)
        EXPECT_TRUE(first.emplace_back(fileOf(format)).startsWith(begin)) << begin;
    QThread::msleep(1100); // formats may note the second
    for (std::size_t i = 0; i < first.size(); ++i)
        EXPECT_EQ(fileOf(rows[i].first), first[i]) << rows[i].second;
}

// The target leaves the axis of its strip for 180° there.
TEST(PlotFile, NoCurveLeavesItsStrip) {
    StripPlot plot;
    plot.setDocument(passPlot());
    const QString svg = QString::fromUtf8(plotPicture(plot, PlotFormat::Svg, {640, 480}));
    plot.setViewport(QRect(0, 0, 640, 480));
    plot.arrange();
    const QRegularExpression lines("<polyline[^>]* points=\"([^\"]*)\"");
    std::vector<int> curves(plot.stripCount(), 0);
    for (const QRegularExpressionMatch& line : lines.globalMatch(svg)) {
        double least = 480.0;
        double greatest = 0.0;
        const QStringList points = line.captured(1).split(' ', Qt::SkipEmptyParts);
        if (points.size() < 10)
            continue; // an axis' mark
        for (const QString& point : points) {
            const double y = point.section(',', 1).toDouble();
            least = std::min(least, y);
            greatest = std::max(greatest, y);
        }
        for (std::size_t i = 0; i < plot.stripCount(); ++i)
            if (least >= plot.strip(i).top() - 1 && greatest <= plot.strip(i).bottom() + 2)
                ++curves[i];
            else
                EXPECT_FALSE(least < plot.strip(i).bottom() && greatest > plot.strip(i).top()) << least << greatest;
    }
    EXPECT_THAT(curves, testing::ElementsAre(1, 1, testing::Ge(2), 1));
}

// The curves' shape, seen in the picture: the range falls from the left edge to the middle and rises again.
TEST(PlotFile, ThePictureShowsTheCurves) {
    StripPlot plot;
    plot.setDocument(plotOf(std::vector{PlottedPass().plotted()}, std::vector{findMeasure("range")}));
    QImage picture;
    ASSERT_TRUE(picture.loadFromData(plotPicture(plot, PlotFormat::Png, {640, 480})));
    EXPECT_EQ(picture.size(), QSize(640, 480));
    plot.setViewport(QRect(0, 0, 640, 480));
    plot.arrange();
    const QColor colour = plot.theme().curve(0);
    const QCPAxis& times = *plot.strip(0).axis(QCPAxis::atBottom);
    const QCPAxis& values = *plot.strip(0).axis(QCPAxis::atLeft);
    for (const double time : {1.0, 3.0, 5.0, 8.0}) {
        const double range = std::hypot(300.0 * (time - 5.0), 40.0);
        const int x = static_cast<int>(std::lround(times.coordToPixel(time)));
        const int y = static_cast<int>(std::lround(values.coordToPixel(range)));
        int least = 1000;
        for (int dx = -1; dx <= 1; ++dx)
            for (int dy = -2; dy <= 2; ++dy) {
                const QColor seen = picture.pixelColor(x + dx, y + dy);
                least = std::min(
                    least, std::abs(seen.red() - colour.red()) + std::abs(seen.green() - colour.green()) +
                               std::abs(seen.blue() - colour.blue()));
            }
        EXPECT_LT(least, 120) << "at " << time << " s";
    }
}

// With the digits of the tables of samples: the coordinates go up to 1500, so that 11 decimals count.
TEST(PlotFile, ATableHoldsWhatIsInViewWithTheDigitsThatCount) {
    const PlottedPass pass;
    const PlotDocument document = plotOf(
        std::vector{pass.plotted()}, std::vector{findMeasure("range")}, PlotAlignment::Start, CurveDigits::Written);
    EXPECT_EQ(
        plotTable(document, {5.95, 6.05}).toStdString(),
        "measure,unit,curve,time_s,value\n\"range\",\"units\",\"range\",6,302.65491900843\n");
    const PlotDocument aligned = plotOf(
        std::vector{pass.plotted()}, std::vector{findMeasure("aspect")}, PlotAlignment::ClosestApproach,
        CurveDigits::Written);
    EXPECT_EQ(aligned.times.begin, -5.0);
    EXPECT_EQ(aligned.strips[0].curves[0].points[51].time, 0.1);
}

// Whatever the samples hold, all measures can be drawn, and what is undefined is a gap and not a number.
TEST(PlotFile, BadSamplesAreGaps) {
    constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const auto at = [](double time, double x) {
        return Sample{.time = time, .targetPosition = {x, 0.0, -1000.0}};
    };
    struct Row {
        const char* what;
        std::vector<Sample> samples;
        std::size_t flares; // in every second sample, all under one of 10,000 numbers
    };
    const Row rows[] = {
        {"one sample", {at(3.0, 50.0)}, 1},
        {"equal times", {at(1.0, 10.0), at(1.0, 20.0), at(1.0, 30.0)}, 1},
        {"a time twice", {at(1.0, 10.0), at(2.0, 20.0), at(2.0, 25.0), at(3.0, 30.0)}, 2},
        {"both at one place", {at(1.0, 0.0), at(2.0, 0.0)}, 0},
        {"no numbers", {at(1.0, kNaN), at(2.0, 20.0), at(3.0, kInfinity), at(4.0, -kInfinity)}, 1},
        {"far away", {at(1.0, 1e300), at(2.0, -1e300), at(3.0, 1e308)}, 1},
        {"many flares", {at(1.0, 10.0), at(2.0, 20.0), at(3.0, 30.0)}, 20000},
    };
    std::vector<const Measure*> measures;
    for (const Measure& measure : allMeasures())
        if (isPlottable(measure))
            measures.push_back(&measure);
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        SampleSeries series;
        for (std::size_t i = 0; i < row.samples.size(); ++i) {
            std::vector<Flare> burning(i % 2 == 0 ? row.flares : 0);
            for (std::size_t flare = 0; flare < burning.size(); ++flare)
                burning[flare].id = static_cast<int>(flare % 10000);
            series.add(row.samples[i], burning);
        }
        series.putInOrder();
        const MeasuredEngagement measured(series, 4.0F);
        for (const PlotAlignment alignment :
             {PlotAlignment::Start, PlotAlignment::FirstFlare, PlotAlignment::ClosestApproach}) {
            StripPlot plot;
            const std::vector<PlottedEngagement> bad{{"bad", &measured, {}}};
            plot.setDocument(plotOf(bad, measures, alignment));
            EXPECT_FALSE(plotPicture(plot, PlotFormat::Png, {300, 900}).isEmpty());
            const PlotDocument written = plotOf(bad, measures, alignment, CurveDigits::Written);
            const QByteArray table = plotTable(written, written.times);
            EXPECT_FALSE(table.contains("nan") || table.contains("inf")) << table.toStdString();
        }
    }
}
