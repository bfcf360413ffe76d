// Drawings in SVG, to stand in a page: shapes whose looks a style sheet says.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sorvane {
// A text as HTML and SVG hold it.
std::string escaped(std::string_view text);

// The greatest of 1, 2 and 5 times powers of ten up to `length`, which is above 0.
double roundBelow(double length);
// Likewise such a number: at most `parts` of them lie in `length`.
double roundStep(double length, int parts);

// Values along a line of pixels.
struct Scale {
    double from = 0.0;
    double to = 1.0;
    double begin = 0.0; // pixels
    double end = 1.0;

    double at(double value) const { return begin + (value - from) / (to - from) * (end - begin); }
    std::vector<double> ticks(int parts) const;
};

struct SvgPoint {
    double x = 0.0;
    double y = 0.0;
};

// Pixels count from the upper left corner. A style is a class of the page's.
class SvgDrawing {
public:
    // `label` says what is seen, for those who don't see it.
    SvgDrawing(int width, int height, const std::string& label);

    void line(const char* style, SvgPoint from, SvgPoint to);
    // `more` are further attributes; `hint` is told under the mouse.
    void rectangle(
        const char* style, SvgPoint corner, double width, double height, const std::string& more = {},
        const std::string& hint = {});
    void circle(const char* style, SvgPoint centre, double radius);
    void curve(const char* style, std::span<const SvgPoint> points, bool isClosed = false);
    // Text to the right of the point ("start"), about it ("middle") or to the left of it ("end").
    void text(const char* style, SvgPoint place, const char* anchor, const std::string& text);
    void beginGroup(const char* style);
    void endGroup() { svg_ += "</g>"; }

    std::string finish();

private:
    std::string svg_;
};
} // namespace sorvane
