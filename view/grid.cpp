// The reference grid on the ground plane with its altitude marks.
#include "grid.h"

#include "glapi.h"
#include "glstate.h"
#include "material.h"

namespace sorvane {
std::vector<Vertex> gridSegments() {
    constexpr int kLines = 10;
    constexpr float kSpacing = 1000.0F;
    constexpr float kExtent = kLines * kSpacing;
    constexpr float kAxisHeight = 5000.0F;
    constexpr int kMarks = 16;
    constexpr float kMarkSpacing = 304.8F;

    std::vector<Vertex> segments;
    for (int i = -kLines; i <= kLines; ++i) {
        const float at = kSpacing * static_cast<float>(i);
        segments.insert(segments.end(), {{-kExtent, at, 0.0F}, {kExtent, at, 0.0F}});
        segments.insert(segments.end(), {{at, -kExtent, 0.0F}, {at, kExtent, 0.0F}});
    }
    // World z points down: up is negative.
    segments.insert(segments.end(), {{0.0F, 0.0F, 0.0F}, {0.0F, 0.0F, -kAxisHeight}});
    for (int k = 1; k <= kMarks; ++k) {
        const float z = -kMarkSpacing * static_cast<float>(k);
        segments.insert(segments.end(), {{-1.0F, -1.0F, z}, {1.0F, 1.0F, z}, {-1.0F, 1.0F, z}, {1.0F, -1.0F, z}});
    }
    return segments;
}

void Grid::draw(float width) {
    const PushedAttributes attributes(GL_CURRENT_BIT | GL_LINE_BIT | GL_HINT_BIT);
    glLineWidth(width);
    grid_mat.apply();
    glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
    buffer_.draw(GL_LINES, buffer_.count());
}
} // namespace sorvane
