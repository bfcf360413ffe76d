// What a plot shows, as the contents of a file.
#pragma once

#include <optional>

#include <QByteArray>
#include <QSize>
#include <QString>

namespace sorvane {
class StripPlot;

enum class PlotFormat { Png, Svg, Pdf, Csv };

// By the name's extension.
std::optional<PlotFormat> plotFormatOf(const QString& path);

// A picture has so many pixels; as a page of PDF a pixel is 1/96 inch. CSV holds a row for each point within the times
// in view, unthinned, whatever the size. The same plot always gives the same bytes. Empty when the format's writer
// fails.
QByteArray plotFile(StripPlot& plot, PlotFormat format, const QSize& size);
} // namespace sorvane
