// Drawings in SVG, to stand in a page: shapes whose looks a style sheet says.
#include "svgdrawing.h"

#include <cmath>

#include <QString>

namespace sorvane {
namespace {
// A tenth of a pixel is enough.
std::string pixels(double value) {
    std::string text = QString::number(value, 'f', 1).toStdString();
    if (text.ends_with(".0"))
        text.resize(text.size() - 2);
    return text == "-0" ? "0" : text;
}

std::string attribute(const char* name, double value) {
    return std::string(" ") + name + "=\"" + pixels(value) + '"';
}

std::string opened(const char* element, const char* style) {
    return std::string("<") + element + " class=\"" + style + '"';
}
} // namespace

std::string escaped(std::string_view text) {
    std::string safe;
    for (const char letter : text)
        switch (letter) {
        case '&':
            safe += "&amp;";
            break;
        case '<':
            safe += "&lt;";
            break;
        case '>':
            safe += "&gt;";
            break;
        case '"':
            safe += "&quot;";
            break;
        default:
            safe += letter;
        }
    return safe;
}

double roundBelow(double length) {
    const double power = std::pow(10.0, std::floor(std::log10(length)));
    for (const double factor : {5.0, 2.0})
        if (factor * power <= length)
            return factor * power;
    return power;
}

double roundStep(double length, int parts) {
    const double least = length / parts;
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= least * (1.0 - 1e-9))
            return factor * power;
    return 10.0 * power;
}

std::vector<double> Scale::ticks(int parts) const {
    const double step = roundStep(to - from, parts);
    std::vector<double> ticks;
    const double slack = 1e-9 * step;
    for (double number = std::ceil((from - slack) / step); number * step <= to + slack; ++number)
        ticks.push_back(number * step + 0.0); // no negative zero
    return ticks;
}

SvgDrawing::SvgDrawing(int width, int height, const std::string& label)
    : svg_(
          "<svg viewBox=\"0 0 " + std::to_string(width) + ' ' + std::to_string(height) +
          "\" role=\"img\" aria-label=\"" + escaped(label) + "\">") {}

void SvgDrawing::line(const char* style, SvgPoint from, SvgPoint to) {
    svg_ += opened("line", style) + attribute("x1", from.x) + attribute("y1", from.y) + attribute("x2", to.x) +
            attribute("y2", to.y) + "/>";
}

void SvgDrawing::rectangle(
    const char* style, SvgPoint corner, double width, double height, const std::string& more, const std::string& hint) {
    svg_ += opened("rect", style) + attribute("x", corner.x) + attribute("y", corner.y) + attribute("width", width) +
            attribute("height", height) + more + (hint.empty() ? "/>" : "><title>" + escaped(hint) + "</title></rect>");
}

void SvgDrawing::circle(const char* style, SvgPoint centre, double radius) {
    svg_ +=
        opened("circle", style) + attribute("cx", centre.x) + attribute("cy", centre.y) + attribute("r", radius) + "/>";
}

void SvgDrawing::curve(const char* style, std::span<const SvgPoint> points, bool isClosed) {
    svg_ += opened("path", style) + " d=\"";
    char step = 'M';
    for (const SvgPoint& point : points) {
        svg_ += step + pixels(point.x) + ' ' + pixels(point.y);
        step = 'L';
    }
    svg_ += isClosed ? "Z\"/>" : "\"/>";
}

void SvgDrawing::text(const char* style, SvgPoint place, const char* anchor, const std::string& text) {
    svg_ += opened("text", style) + attribute("x", place.x) + attribute("y", place.y) + " text-anchor=\"" + anchor +
            "\">" + escaped(text) + "</text>";
}

void SvgDrawing::beginGroup(const char* style) {
    svg_ += opened("g", style) + '>';
}

std::string SvgDrawing::finish() {
    return svg_ + "</svg>";
}
} // namespace sorvane
