// Holds the signatures of two bodies beside each other.
#include "bodycomparison.h"

#include <cmath>

#include <QApplication>
#include <QFile>
#include <QFileInfo>

#include "litbody.h"
#include "plotfile.h"
#include "polarplot.h"
#include "resultfile.h"
#include "shortestnumber.h"
#include "textapplication.h"

namespace sorvane {
namespace {
constexpr QSize kPlotSize(800, 800);

Outcome<SignatureMap> mapOf(const std::string& path, const BodyComparisonChoice& choice) {
    const BodyChoice files{.band = choice.band};
    const LightChoice light{.atmosphere = choice.atmosphere};
    const Outcome<LitBody> body = bodyAlone(path, files, light);
    if (!body)
        return body.problem();
    return signatureOf(body->body, body->light, SignatureGrid(choice.step), 1.0);
}

// At the level of the wings, and half-way above and below.
PolarDocument plotOf(const BodyComparison& comparison) {
    PolarDocument document;
    const auto name = [](const std::string& path) {
        return QFileInfo(QFile::decodeName(path.c_str())).fileName();
    };
    document.title =
        QStringLiteral("%1 against %2: radiant intensity (dB)").arg(name(comparison.b), name(comparison.a));
    document.isFromZero = false;
    const SignatureGrid& grid = comparison.differences.grid;
    const std::size_t columns = grid.azimuthCount();
    for (const double elevation : {0.0, 45.0, -45.0}) {
        const std::size_t row = grid.rowNearest(elevation);
        PolarCurve curve;
        curve.name = QStringLiteral("elevation %1°").arg(QString::fromStdString(shortestText(grid.elevation(row))));
        curve.colour = static_cast<int>(document.curves.size());
        const auto first = comparison.differences.differences.begin() + static_cast<std::ptrdiff_t>(row * columns);
        curve.values.assign(first, first + static_cast<std::ptrdiff_t>(columns));
        document.curves.push_back(std::move(curve));
    }
    return document;
}

std::optional<Problem> writePlot(const BodyComparison& comparison, const std::string& path, Streams& streams) {
    const std::optional<PlotFormat> format = plotFormatOf(QString::fromStdString(path));
    if (*format == PlotFormat::Csv)
        return writeResult(path, streams, [&](std::ostream& out) { writeCsv(out, comparison); });
    const TextApplication application(makeApplication<QApplication>);
    if (application.problem())
        return application.problem();
    PolarPlot plot(plotOf(comparison));
    const QByteArray bytes = plotPicture(plot, *format, kPlotSize);
    return writeResult(path, streams, [&bytes](std::ostream& out) { out.write(bytes.data(), bytes.size()); });
}
} // namespace

Outcome<BodyComparison>
compareBodies(const std::string& a, const std::string& b, const BodyComparisonChoice& choice, Streams& streams) {
    if (!SignatureGrid::isStep(choice.step))
        return Problem("--step is not a part of 90 degrees, or is below 0.5");
    if (!choice.plot.empty() && !plotFormatOf(QString::fromStdString(choice.plot)))
        return Problem(choice.plot + ": its name ends in none of .png, .svg, .pdf and .csv");
    Outcome<SignatureMap> mapA = mapOf(a, choice);
    if (!mapA)
        return mapA.problem();
    Outcome<SignatureMap> mapB = mapOf(b, choice);
    if (!mapB)
        return mapB.problem();
    BodyComparison comparison{a, b, *std::move(mapA), *std::move(mapB), {}, choice.toleranceDecibels};
    comparison.differences = compareSignatures(comparison.mapA, comparison.mapB);
    if (!choice.plot.empty())
        if (const std::optional<Problem> problem = writePlot(comparison, choice.plot, streams))
            return *problem;
    return comparison;
}
} // namespace sorvane
