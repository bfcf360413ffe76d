// How much of each facet of a body can be seen from a place: a rasteriser on the processor.
#include "facetvisibility.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace sorvane {
namespace {
constexpr std::uint32_t kNobody = std::numeric_limits<std::uint32_t>::max();
constexpr double kBorder = 0.5;     // pixels around what is drawn
constexpr double kSameDepth = 0.01; // of a pixel's side

// The upright directions across the view; seen from straight above or below, the nose lies upwards.
void chooseAxes(const Vec3d& towards, Vec3d& right, Vec3d& up) {
    const Vec3d level = cross({0.0, 0.0, 1.0}, towards);
    right = length(level) > 1e-9 ? unit(level) : Vec3d{0.0, -1.0, 0.0};
    up = cross(towards, right);
}
} // namespace

// The depth over a facet, kept between the depths of its corners, since the plane of a facet that is seen from its edge
// is as good as upright.
struct FacetVisibility::DepthPlane {
    explicit DepthPlane(const std::array<Corner, 3>& c) : origin(c[0]) {
        const double x1 = c[1].x - c[0].x;
        const double y1 = c[1].y - c[0].y;
        const double z1 = c[1].depth - c[0].depth;
        const double x2 = c[2].x - c[0].x;
        const double y2 = c[2].y - c[0].y;
        const double z2 = c[2].depth - c[0].depth;
        const double area = x1 * y2 - x2 * y1;
        if (area != 0.0) {
            perX = (z1 * y2 - z2 * y1) / area;
            perY = (x1 * z2 - x2 * z1) / area;
        }
        const auto [least, greatest] = std::minmax({c[0].depth, c[1].depth, c[2].depth});
        low = static_cast<float>(least);
        high = static_cast<float>(greatest);
    }
    double at(double x, double y) const { return origin.depth + (x - origin.x) * perX + (y - origin.y) * perY; }

    Corner origin;
    double perX = 0.0;
    double perY = 0.0;
    float low;
    float high;
};

FacetVisibility::FacetVisibility(int pixels) : pixels_(pixels) {
    const std::size_t count = static_cast<std::size_t>(pixels) * static_cast<std::size_t>(pixels);
    depths_.resize(count);
    owners_.resize(count);
}

void FacetVisibility::look(const SignatureBody& body, const Viewpoint& viewpoint, std::vector<float>& shares) {
    shares.assign(body.facets().size(), 0.0F);
    project(body, viewpoint);
    std::ranges::fill(owners_, kNobody);
    std::ranges::fill(depths_, -std::numeric_limits<float>::infinity());
    for (std::size_t number = 0; number < drawn_.size(); ++number)
        draw(static_cast<std::uint32_t>(number));
    for (const Drawn& drawn : drawn_) {
        float& share = shares[drawn.facet];
        if (drawn.covered > 0)
            share = static_cast<float>(drawn.visible) / static_cast<float>(drawn.covered);
        else
            share = isMiddleVisible(drawn) ? 1.0F : 0.0F;
    }
}

void FacetVisibility::project(const SignatureBody& body, const Viewpoint& viewpoint) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    Vec3d right;
    Vec3d up;
    chooseAxes(viewpoint.towards, right, up);
    // What lies nearer is the larger.
    const auto enlargement = [&viewpoint](const Vec3d& place) {
        return viewpoint.isFar() ? 1.0 : viewpoint.range / (viewpoint.range - dot(place, viewpoint.towards));
    };
    const auto isInFront = [&viewpoint](const Vec3d& place) {
        return dot(place, viewpoint.towards) < viewpoint.range;
    };
    drawn_.clear();
    double low[2] = {kInfinity, kInfinity};
    double high[2] = {-kInfinity, -kInfinity};
    const auto facets = body.facets();
    for (std::size_t k = 0; k < facets.size(); ++k) {
        const std::array<Vec3d, 3>& corners = facets[k].corners;
        if (!(dot(facets[k].area, viewpoint.from(corners[0])) > 0.0) || !std::ranges::all_of(corners, isInFront))
            continue;
        Drawn& drawn = drawn_.emplace_back();
        drawn.facet = static_cast<std::uint32_t>(k);
        for (std::size_t i = 0; i < 3; ++i) {
            const Vec3d seen = enlargement(corners[i]) * corners[i];
            const Corner at{dot(seen, right), dot(seen, up), dot(seen, viewpoint.towards)};
            drawn.corners[i] = at;
            low[0] = std::min(low[0], at.x);
            high[0] = std::max(high[0], at.x);
            low[1] = std::min(low[1], at.y);
            high[1] = std::max(high[1], at.y);
        }
    }
    const double room = pixels_ - 2.0 * kBorder;
    const double width = high[0] - low[0];
    const double height = high[1] - low[1];
    pixelSize_ = std::max(width, height) / room;
    const double xScale = width > 0.0 ? room / width : 0.0;
    const double yScale = height > 0.0 ? room / height : 0.0;
    for (Drawn& drawn : drawn_)
        for (Corner& corner : drawn.corners) {
            corner.x = kBorder + (corner.x - low[0]) * xScale;
            corner.y = kBorder + (corner.y - low[1]) * yScale;
        }
}

// Row by row between the edges. An edge that two facets share is walked from the same end for both, so that each
// pixel's middle lies in one of them.
void FacetVisibility::draw(std::uint32_t number) {
    const std::array<Corner, 3>& corners = drawn_[number].corners;
    const DepthPlane plane(corners);
    const auto isLower = [](const Corner& a, const Corner& b) {
        return a.y < b.y || (a.y == b.y && a.x < b.x);
    };
    std::array<Corner, 3> c = corners;
    if (isLower(c[1], c[0]))
        std::swap(c[0], c[1]);
    if (isLower(c[2], c[1]))
        std::swap(c[1], c[2]);
    if (isLower(c[1], c[0]))
        std::swap(c[0], c[1]);
    const auto rowAfter = [this](double y) {
        return std::clamp(static_cast<int>(std::ceil(y - 0.5)), 0, pixels_);
    };
    const auto slope = [](const Corner& a, const Corner& b) {
        return b.y > a.y ? (b.x - a.x) / (b.y - a.y) : 0.0;
    };
    const double slopes[3] = {slope(c[0], c[2]), slope(c[0], c[1]), slope(c[1], c[2])};
    const int middle = rowAfter(c[1].y);
    const int last = rowAfter(c[2].y);
    for (int y = rowAfter(c[0].y); y < last; ++y) {
        const double at = y + 0.5;
        const double x1 = c[0].x + (at - c[0].y) * slopes[0];
        const double x2 = y < middle ? c[0].x + (at - c[0].y) * slopes[1] : c[1].x + (at - c[1].y) * slopes[2];
        drawRow(number, y, std::min(x1, x2), std::max(x1, x2), plane);
    }
}

void FacetVisibility::drawRow(std::uint32_t number, int y, double left, double right, const DepthPlane& plane) {
    const int first = std::clamp(static_cast<int>(std::ceil(left - 0.5)), 0, pixels_);
    const int end = std::clamp(static_cast<int>(std::ceil(right - 0.5)), first, pixels_);
    const std::size_t row = static_cast<std::size_t>(y) * static_cast<std::size_t>(pixels_);
    const auto begin = static_cast<float>(plane.at(first + 0.5, y + 0.5));
    const auto step = static_cast<float>(plane.perX);
    std::uint32_t visible = 0;
    for (int x = first; x < end; ++x) {
        const float depth = std::clamp(begin + static_cast<float>(x - first) * step, plane.low, plane.high);
        const std::size_t pixel = row + static_cast<std::size_t>(x);
        if (!(depth > depths_[pixel]))
            continue;
        if (owners_[pixel] != kNobody)
            --drawn_[owners_[pixel]].visible;
        owners_[pixel] = number;
        depths_[pixel] = depth;
        ++visible;
    }
    drawn_[number].visible += visible;
    drawn_[number].covered += static_cast<std::uint32_t>(end - first);
}

// Of a facet between the pixels' middles: whether one that the pixels around its own middle show lies in front of that.
bool FacetVisibility::isMiddleVisible(const Drawn& drawn) const {
    const auto mean = [&](double Corner::*member) {
        return (drawn.corners[0].*member + drawn.corners[1].*member + drawn.corners[2].*member) / 3.0;
    };
    const Corner middle{mean(&Corner::x), mean(&Corner::y), mean(&Corner::depth)};
    const auto row = static_cast<int>(middle.y);
    const auto column = static_cast<int>(middle.x);
    std::uint32_t last = kNobody;
    for (int y = std::max(row - 1, 0); y <= std::min(row + 1, pixels_ - 1); ++y)
        for (int x = std::max(column - 1, 0); x <= std::min(column + 1, pixels_ - 1); ++x) {
            const std::uint32_t owner =
                owners_[static_cast<std::size_t>(y) * static_cast<std::size_t>(pixels_) + static_cast<std::size_t>(x)];
            if (owner == kNobody || owner == last)
                continue;
            last = owner;
            if (hides(drawn_[owner], middle))
                return false;
        }
    return true;
}

bool FacetVisibility::hides(const Drawn& front, const Corner& at) const {
    const auto side = [&at](const Corner& a, const Corner& b) {
        return (b.x - a.x) * (at.y - a.y) - (b.y - a.y) * (at.x - a.x);
    };
    const auto& [a, b, c] = front.corners;
    const double ofA = side(b, c);
    const double ofB = side(c, a);
    const double ofC = side(a, b);
    if (ofA < 0.0 || ofB < 0.0 || ofC < 0.0)
        return false;
    const double depth = (ofA * a.depth + ofB * b.depth + ofC * c.depth) / (ofA + ofB + ofC);
    return depth > at.depth + kSameDepth * pixelSize_;
}
} // namespace sorvane
