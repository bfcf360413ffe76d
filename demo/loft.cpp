// Closed surfaces spanned over a row of cross-sections.
#include "loft.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace sorvane {
Mesh loft(const Vec3d& firstTip, Part firstPart, const std::vector<Section>& sections, const Vec3d& lastTip) {
    const std::size_t count = sections.front().ring.size();
    Mesh mesh;
    mesh.points.push_back(firstTip);
    for (const Section& section : sections)
        mesh.points.insert(mesh.points.end(), section.ring.begin(), section.ring.end());
    mesh.points.push_back(lastTip);

    const std::size_t last = mesh.points.size() - 1;
    const auto point = [count](std::size_t section, std::size_t i) {
        return 1 + section * count + i % count;
    };
    for (std::size_t i = 0; i < count; ++i)
        mesh.facets.push_back({{0, point(0, i), point(0, i + 1)}, firstPart});
    for (std::size_t section = 0; section + 1 < sections.size(); ++section)
        for (std::size_t i = 0; i < count; ++i) {
            const Part& part = sections[section].part;
            mesh.facets.push_back({{point(section, i), point(section + 1, i), point(section + 1, i + 1)}, part});
            mesh.facets.push_back({{point(section, i), point(section + 1, i + 1), point(section, i + 1)}, part});
        }
    const std::size_t end = sections.size() - 1;
    for (std::size_t i = 0; i < count; ++i)
        mesh.facets.push_back({{last, point(end, i + 1), point(end, i)}, sections[end].part});

    if (signedVolume(mesh) < 0.0)
        for (MeshFacet& facet : mesh.facets)
            std::swap(facet.corners[1], facet.corners[2]);
    return mesh;
}

namespace {
// The Catmull-Rom curve from b to c.
double curve(double a, double b, double c, double d, double t) {
    return b + 0.5 * t * (c - a + t * (2.0 * a - 5.0 * b + 4.0 * c - d + t * (3.0 * (b - c) + d - a)));
}
} // namespace

std::vector<Oval> smoothed(const std::vector<Oval>& ovals, int steps) {
    std::vector<Oval> result;
    for (std::size_t i = 0; i + 1 < ovals.size(); ++i) {
        const Oval& b = ovals[i];
        const Oval& c = ovals[i + 1];
        const Oval& a = i == 0 ? b : ovals[i - 1];
        const Oval& d = i + 2 == ovals.size() ? c : ovals[i + 2];
        for (int step = 0; step < steps; ++step) {
            const double t = static_cast<double>(step) / steps;
            const auto between = [&](double Oval::*value) {
                return curve(a.*value, b.*value, c.*value, d.*value, t);
            };
            const auto centreBetween = [&](double Vec3d::*value) {
                return curve(a.centre.*value, b.centre.*value, c.centre.*value, d.centre.*value, t);
            };
            result.push_back(
                {between(&Oval::x),
                 between(&Oval::halfWidth),
                 between(&Oval::halfHeight),
                 {centreBetween(&Vec3d::x), centreBetween(&Vec3d::y), centreBetween(&Vec3d::z)},
                 between(&Oval::squareness),
                 b.part});
        }
    }
    result.push_back(ovals.back());
    return result;
}

std::vector<Section> ovalSections(const std::vector<Oval>& ovals, int points) {
    std::vector<Section> sections;
    for (const Oval& oval : ovals) {
        Section section{{}, oval.part};
        const auto bulge = [&oval](double value) {
            return std::copysign(std::pow(std::abs(value), 2.0 / oval.squareness), value);
        };
        for (int i = 0; i < points; ++i) {
            // Half a step off, so that no point lies on an axis, where a power of a rounding error is no longer small.
            const double angle = 2.0 * std::numbers::pi * (i + 0.5) / points;
            section.ring.push_back(
                oval.centre +
                Vec3d{oval.x, oval.halfWidth * bulge(std::cos(angle)), oval.halfHeight * bulge(std::sin(angle))});
        }
        sections.push_back(std::move(section));
    }
    return sections;
}

namespace {
// Half the thickness of a section of chord and thickness 1, with a closed trailing edge.
double halfThickness(double x) {
    return 5.0 * (0.2969 * std::sqrt(x) + x * (-0.1260 + x * (-0.3516 + x * (0.2843 - x * 0.1036))));
}

Vec3d middle(const std::vector<Vec3d>& points) {
    Vec3d sum;
    for (const Vec3d& point : points)
        sum = sum + point;
    return 1.0 / static_cast<double>(points.size()) * sum;
}
} // namespace

Mesh wing(const WingEnd& root, const WingEnd& tip, int spans, int chordSteps, const Vec3d& upwards, Part part) {
    std::vector<Section> sections;
    for (int span = 0; span <= spans; ++span) {
        const double t = static_cast<double>(span) / spans;
        const Vec3d leadingEdge = root.leadingEdge + t * (tip.leadingEdge - root.leadingEdge);
        const double chord = std::lerp(root.chord, tip.chord, t);
        const double thickness = std::lerp(root.thickness, tip.thickness, t) * chord;
        Section section{{}, part};
        for (int i = 0; i < 2 * chordSteps; ++i) {
            const int fromLeadingEdge = std::min(i, 2 * chordSteps - i);
            const double along = 0.5 - 0.5 * std::cos(std::numbers::pi * fromLeadingEdge / chordSteps);
            const double side = i == fromLeadingEdge ? 1.0 : -1.0;
            section.ring.push_back(
                leadingEdge + Vec3d{-along * chord, 0.0, 0.0} +
                side * (i % chordSteps == 0 ? 0.0 : halfThickness(along)) * thickness * upwards);
        }
        sections.push_back(std::move(section));
    }
    return loft(middle(sections.front().ring), part, sections, middle(sections.back().ring));
}
} // namespace sorvane
