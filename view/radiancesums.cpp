// Puts a radiance picture together of parts that were sampled more finely than the rest.
#include "radiancesums.h"

#include <algorithm>
#include <cmath>

namespace sorvane {
namespace {
using Direction = std::array<double, 3>;
using Rotation = std::array<double, 9>;

Direction turned(const Rotation& m, const Direction& v) {
    return {
        m[0] * v[0] + m[1] * v[1] + m[2] * v[2], m[3] * v[0] + m[4] * v[1] + m[5] * v[2],
        m[6] * v[0] + m[7] * v[1] + m[8] * v[2]};
}

Rotation transposed(const Rotation& m) {
    return {m[0], m[3], m[6], m[1], m[4], m[7], m[2], m[5], m[8]};
}

bool isBefore(const Direction& v) {
    constexpr double kLeast = 1e-3; // of its length: what lies beside the eye has no place in a picture
    return -v[2] > kLeast * std::hypot(v[0], v[1], v[2]);
}

Tangents tangentsOf(const Direction& v) {
    return {v[0] / -v[2], v[1] / -v[2]};
}

bool contains(const SampledBox& sampled, const Direction& inPicture) {
    const Direction own = turned(transposed(sampled.toPicture), inPicture);
    return isBefore(own) && sampled.box.contains(tangentsOf(own));
}

int pixelNumber(double place, int count) {
    return static_cast<int>(std::floor(std::clamp(place, -1.0, count + 1.0)));
}
} // namespace

RadianceSums::RadianceSums(const PixelPlane& plane)
    : plane_(plane), pixels_(static_cast<std::size_t>(plane.width()) * static_cast<std::size_t>(plane.height())) {}

void RadianceSums::add(const SampledBox& sampled, std::span<const float> radiances) {
    const Added added{sampled, rangeOf(sampled)};
    const std::vector<Part> parts = partsOf(added, radiances);
    const Range& range = added.range;
    for (int row = range.firstRow; row < range.endRow; ++row)
        for (int column = range.firstColumn; column < range.endColumn; ++column) {
            const Part& part = parts[range.indexOf(column, row)];
            Pixel& pixel = pixels_
                [static_cast<std::size_t>(row) * static_cast<std::size_t>(plane_.width()) +
                 static_cast<std::size_t>(column)];
            if (pixel.isWhole || part.solidAngle == 0.0)
                continue;
            const double rest = 1.0 - pixel.share;
            const double share = part.solidAngle / plane_.solidAngleOf(column, row);
            // How many samples fall into a pixel that the box covers depends on where they lie.
            pixel.isWhole = covers(sampled, column, row);
            const double counted = pixel.isWhole ? rest : std::min(share, rest);
            pixel.radiance += part.radiance / part.solidAngle * counted;
            pixel.share += counted;
        }
    added_.push_back(added);
}

std::vector<float> RadianceSums::over(std::span<const float> rest) const {
    std::vector<float> picture(pixels_.size());
    for (std::size_t i = 0; i < pixels_.size(); ++i)
        picture[i] = pixels_[i].share == 0.0
                         ? rest[i]
                         : static_cast<float>(pixels_[i].radiance + (1.0 - pixels_[i].share) * double{rest[i]});
    return picture;
}

// The pixels that the box may reach into.
RadianceSums::Range RadianceSums::rangeOf(const SampledBox& sampled) const {
    Range range{plane_.width(), 0, plane_.height(), 0};
    for (const double right : {sampled.box.left, sampled.box.right})
        for (const double up : {sampled.box.bottom, sampled.box.top}) {
            const Direction corner = turned(sampled.toPicture, {right, up, -1.0});
            if (!isBefore(corner))
                return {0, plane_.width(), 0, plane_.height()};
            const Tangents at = tangentsOf(corner);
            const int column = pixelNumber(plane_.columnOf(at), plane_.width());
            const int row = pixelNumber(plane_.rowOf(at), plane_.height());
            range = {
                std::min(range.firstColumn, column), std::max(range.endColumn, column + 1),
                std::min(range.firstRow, row), std::max(range.endRow, row + 1)};
        }
    return {
        std::max(range.firstColumn, 0), std::min(range.endColumn, plane_.width()), std::max(range.firstRow, 0),
        std::min(range.endRow, plane_.height())};
}

std::vector<RadianceSums::Part> RadianceSums::partsOf(const Added& added, std::span<const float> radiances) const {
    const auto& [sampled, range] = added;
    if (range.firstColumn >= range.endColumn || range.firstRow >= range.endRow)
        return {};
    std::vector<Part> parts(range.indexOf(range.firstColumn, range.endRow));
    std::vector<const SampledBox*> finer;
    for (const Added& other : added_)
        if (other.range.meets(range))
            finer.push_back(&other.sampled);
    const double width = (sampled.box.right - sampled.box.left) / sampled.columns;
    const double height = (sampled.box.top - sampled.box.bottom) / sampled.rows;
    auto radiance = radiances.begin();
    for (int j = 0; j < sampled.rows; ++j) {
        const double up = sampled.box.bottom + (j + 0.5) * height;
        for (int i = 0; i < sampled.columns; ++i) {
            const double value = *radiance++;
            const double right = sampled.box.left + (i + 0.5) * width;
            const Direction direction = turned(sampled.toPicture, {right, up, -1.0});
            if (!isBefore(direction))
                continue;
            const Tangents at = tangentsOf(direction);
            const int column = pixelNumber(plane_.columnOf(at), plane_.width());
            const int row = pixelNumber(plane_.rowOf(at), plane_.height());
            if (column < range.firstColumn || column >= range.endColumn || row < range.firstRow ||
                row >= range.endRow ||
                std::ranges::any_of(finer, [&](const SampledBox* box) { return contains(*box, direction); }))
                continue;
            const double squared = 1.0 + right * right + up * up;
            const double solidAngle = width * height / (squared * std::sqrt(squared));
            Part& part = parts[range.indexOf(column, row)];
            part.radiance += value * solidAngle;
            part.solidAngle += solidAngle;
        }
    }
    return parts;
}

bool RadianceSums::covers(const SampledBox& sampled, int column, int row) const {
    const TangentBox pixel = plane_.boxOf(column, row);
    for (const double right : {pixel.left, pixel.right})
        for (const double up : {pixel.bottom, pixel.top})
            if (!contains(sampled, {right, up, -1.0}))
                return false;
    return true;
}
} // namespace sorvane
