// What a plot shows, as the contents of a file.
#pragma once

#include <optional>

#include <QByteArray>
#include <QSize>
#include <QString>

#include "plotdocument.h"

namespace sorvane {
class PolarPlot;
class StripPlot;

enum class PlotFormat { Png, Svg, Pdf, Csv };

// By the name's extension.
std::optional<PlotFormat> plotFormatOf(const QString& path);

// A picture of so many pixels; on a page of PDF a pixel is 1/96 inch. The same plot always gives the same bytes. Empty
// when the format's writer fails.
QByteArray plotPicture(StripPlot& plot, PlotFormat format, const QSize& size);
QByteArray plotPicture(PolarPlot& plot, PlotFormat format, const QSize& size);

// CSV with a row for each point within the times, but gaps. The document's digits are those to write.
QByteArray plotTable(const PlotDocument& document, const TimeRange& times);
} // namespace sorvane
