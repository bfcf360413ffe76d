// Where a ray meets the mesh of a tile of terrain.
#include "groundray.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace sorvane {
namespace {
// A number that goes evenly along the ray.
struct Line {
    double at0 = 0.0;
    double slope = 0.0;

    double at(double depth) const { return at0 + slope * depth; }
    // The depth of a value; infinite for one that is never met.
    double depthOf(double value) const {
        return slope == 0.0 ? std::numeric_limits<double>::infinity() : (value - at0) / slope;
    }
};

struct Span {
    double begin = 0.0;
    double end = 0.0;

    // Leaves what lies between two values of the line.
    void cut(const Line& line, double lowest, double highest) {
        if (line.slope == 0.0) {
            if (!(line.at0 >= lowest && line.at0 <= highest))
                end = begin - 1.0;
            return;
        }
        const auto [first, last] = std::minmax(line.depthOf(lowest), line.depthOf(highest));
        begin = std::max(begin, first);
        end = std::min(end, last);
    }
};

// A ray over the cells of a tile, in columns, rows and heights.
class Walk {
public:
    Walk(const TileGround& ground, const GroundRay& ray)
        : ground_(ground), tile_(ground.placement), ray_(ray), height_{ray.eye.z, ray.way.z} {
        const double columnX = double{tile_.xvec[0]} * double{tile_.scale[0]};
        const double rowX = double{tile_.xvec[1]} * double{tile_.scale[0]};
        const double columnY = double{tile_.yvec[0]} * double{tile_.scale[1]};
        const double rowY = double{tile_.yvec[1]} * double{tile_.scale[1]};
        const double determinant = columnX * rowY - rowX * columnY;
        const auto lineOf = [&](double ofX, double ofY) -> Line {
            const double x = ray.eye.x - double{tile_.origin[0]};
            const double y = ray.eye.y - double{tile_.origin[1]};
            return {(ofX * x + ofY * y) / determinant, (ofX * ray.way.x + ofY * ray.way.y) / determinant};
        };
        // cppcheck-suppress useInitializationList
        column_ = lineOf(rowY, -rowX); // shares what is worked out above with the rows'
        row_ = lineOf(-columnY, columnX);
        isSound_ = determinant != 0.0 && std::isfinite(determinant);
    }

    std::optional<GroundHit> first() {
        Span whole{0.0, ray_.farthest};
        whole.cut(column_, 0.0, tile_.columns - 1);
        whole.cut(row_, 0.0, tile_.rows - 1);
        const double lowest = double{ground_.bounds.minimum[2]};
        const double highest = double{ground_.bounds.maximum[2]};
        const double slack = highest - lowest + 1.0;
        if (std::isfinite(slack))
            whole.cut(height_, lowest - slack, highest + slack);
        if (!isSound_ || tile_.columns < 2 || tile_.rows < 2 || !(whole.begin <= whole.end))
            return std::nullopt;
        const double middle = std::min(whole.begin + 1e-9 * std::abs(whole.begin), whole.end);
        int column = std::clamp(static_cast<int>(column_.at(middle)), 0, tile_.columns - 2);
        int row = std::clamp(static_cast<int>(row_.at(middle)), 0, tile_.rows - 2);
        const int columnStep = column_.slope > 0.0 ? 1 : -1;
        const int rowStep = row_.slope > 0.0 ? 1 : -1;
        for (double depth = whole.begin;
             column >= 0 && row >= 0 && column <= tile_.columns - 2 && row <= tile_.rows - 2;) {
            const double nextColumn = column_.depthOf(column_.slope > 0.0 ? column + 1 : column);
            const double nextRow = row_.depthOf(row_.slope > 0.0 ? row + 1 : row);
            const double next = std::clamp(std::min(nextColumn, nextRow), depth, whole.end);
            if (const std::optional<double> met = through(column, row, {depth, next}))
                return GroundHit{*met, postOf(column, row)};
            if (next >= whole.end)
                break;
            if (nextColumn <= nextRow)
                column += columnStep;
            else
                row += rowStep;
            depth = next;
        }
        return std::nullopt;
    }

private:
    std::size_t postOf(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(tile_.columns) +
               static_cast<std::size_t>(column);
    }
    // As it is drawn: stored heights are scaled once more.
    double heightOf(int column, int row) const {
        return double{tile_.position(column, row, ground_.heights[postOf(column, row)])[2]};
    }

    // The two triangles of a cell meet where both count up or down from one of its corners (TerrainMesh): rows that run
    // north are cut from the first post to the one beyond, others across.
    std::optional<double> through(int column, int row, const Span& span) {
        const double first = heightOf(column, row);
        const double east = heightOf(column + 1, row);
        const double beyond = heightOf(column, row + 1);
        const double last = heightOf(column + 1, row + 1);
        const Line u{column_.at0 - column, column_.slope};
        const Line v{row_.at0 - row, row_.slope};
        const auto heightAbove = [&](double base, double byColumn, double byRow) -> Line {
            return {
                height_.at0 - base - byColumn * u.at0 - byRow * v.at0,
                height_.slope - byColumn * u.slope - byRow * v.slope};
        };
        const bool isNorthward = tile_.yvec[1] > 0.0F;
        // Above 0 on the side of the first of the two triangles.
        const Line side =
            isNorthward ? Line{v.at0 - u.at0, v.slope - u.slope} : Line{1.0 - u.at0 - v.at0, -u.slope - v.slope};
        const Line one = isNorthward ? heightAbove(first, last - beyond, beyond - first)
                                     : heightAbove(first, east - first, beyond - first);
        const Line other = isNorthward ? heightAbove(first, east - first, last - east)
                                       : heightAbove(beyond + east - last, last - beyond, last - east);
        const double cut = std::clamp(side.depthOf(0.0), span.begin, span.end);
        for (const Span& part : {Span{span.begin, cut}, Span{cut, span.end}}) {
            const Line& above = side.at((part.begin + part.end) / 2.0) > 0.0 ? one : other;
            const double begin = above.at(part.begin);
            const double end = above.at(part.end);
            const bool wasAbove = isAbove_ || begin >= 0.0;
            isAbove_ = end >= 0.0;
            if (wasAbove && end < 0.0)
                return begin > 0.0 ? part.begin + (part.end - part.begin) * begin / (begin - end) : part.begin;
        }
        return std::nullopt;
    }

    const TileGround& ground_;
    const TilePlacement& tile_;
    const GroundRay& ray_;
    Line column_;
    Line row_;
    Line height_;
    bool isSound_ = false;
    bool isAbove_ = false; // whether the ray was above the ground where the last triangle ended
};
} // namespace

std::optional<GroundHit> meetGround(const TileGround& tile, const GroundRay& ray) {
    return Walk(tile, ray).first();
}
} // namespace sorvane
