// What a plot shows, as the contents of a file.
#include "plotfile.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QPdfWriter>
#include <QSvgGenerator>

#include "measure.h"
#include "polarplot.h"
#include "shortestnumber.h"
#include "stripplot.h"

namespace sorvane {
namespace {
constexpr int kPixelsPerInch = 96;

// Returns whether the device could be painted on.
template <class Plot> bool paint(Plot& plot, QPaintDevice& device, const QSize& size) {
    QCPPainter painter(&device);
    if (!painter.isActive())
        return false;
    const QRect before = plot.viewport();
    plot.setViewport(QRect(QPoint(0, 0), size));
    plot.arrange();
    painter.setMode(QCPPainter::pmNoCaching);
    plot.toPainter(&painter, size.width(), size.height());
    plot.setViewport(before);
    plot.arrange();
    return painter.end();
}

template <class Plot> QByteArray png(Plot& plot, const QSize& size) {
    QImage image(size, QImage::Format_RGB32);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return paint(plot, image, size) && image.save(&buffer, "PNG") ? bytes : QByteArray();
}

template <class Plot> QByteArray svg(Plot& plot, const QSize& size) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(0, 0), size));
    generator.setResolution(kPixelsPerInch);
    generator.setTitle(plot.document().title);
    return paint(plot, generator, size) ? bytes : QByteArray();
}

// The writer notes the time: what differs from one run to the next is made the same.
void dropDate(QByteArray& bytes) {
    const QByteArray key("/CreationDate (D:");
    const qsizetype begin = bytes.indexOf(key);
    const qsizetype end = begin < 0 ? -1 : bytes.indexOf(')', begin);
    if (end < 0)
        return;
    QByteArray date("20000101000000Z");
    date.append(end - begin - key.size() - date.size(), ' '); // offsets of what follows stay
    bytes.replace(begin + key.size(), end - begin - key.size(), date);
}

template <class Plot> QByteArray pdf(Plot& plot, const QSize& size) {
    constexpr double kPointsPerPixel = 72.0 / kPixelsPerInch;
    QByteArray bytes;
    {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        writer.setResolution(kPixelsPerInch);
        writer.setPageSize(QPageSize(QSizeF(size) * kPointsPerPixel, QPageSize::Point, {}, QPageSize::ExactMatch));
        writer.setPageMargins(QMarginsF());
        writer.setTitle(plot.document().title);
        writer.setCreator(QStringLiteral("sorvane"));
        if (!paint(plot, writer, size))
            return {};
    }
    dropDate(bytes);
    return bytes;
}

template <class Plot> QByteArray pictureOf(Plot& plot, PlotFormat format, const QSize& size) {
    switch (format) {
    case PlotFormat::Png:
        return png(plot, size);
    case PlotFormat::Svg:
        return svg(plot, size);
    case PlotFormat::Pdf:
        return pdf(plot, size);
    case PlotFormat::Csv:
        break;
    }
    return {};
}

QString quoted(QString text) {
    return u'"' + text.replace(u'"', QStringLiteral("\"\"")) + u'"';
}
} // namespace

QByteArray plotTable(const PlotDocument& document, const TimeRange& times) {
    QByteArray table("measure,unit,curve,time_s,value\n");
    for (const PlotStrip& strip : document.strips)
        for (const PlotCurve& curve : strip.curves) {
            const QString begin = QStringList{quoted(strip.title), quoted(strip.unit), quoted(curve.name)}.join(u',');
            for (const PlotPoint& point : curve.points)
                if (point.time >= times.begin && point.time <= times.end && std::isfinite(point.value)) {
                    table += begin.toUtf8() + ',' + QByteArray::fromStdString(shortestText(point.time)) + ',' +
                             QByteArray::fromStdString(shortestText(point.value)) + '\n';
                }
        }
    return table;
}

std::optional<PlotFormat> plotFormatOf(const QString& path) {
    const QString extension = QFileInfo(path).suffix().toLower();
    if (extension == QLatin1String("png"))
        return PlotFormat::Png;
    if (extension == QLatin1String("svg"))
        return PlotFormat::Svg;
    if (extension == QLatin1String("pdf"))
        return PlotFormat::Pdf;
    if (extension == QLatin1String("csv"))
        return PlotFormat::Csv;
    return std::nullopt;
}

QByteArray plotPicture(StripPlot& plot, PlotFormat format, const QSize& size) {
    return pictureOf(plot, format, size);
}

QByteArray plotPicture(PolarPlot& plot, PlotFormat format, const QSize& size) {
    return pictureOf(plot, format, size);
}
} // namespace sorvane
