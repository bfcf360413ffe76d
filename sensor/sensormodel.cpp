// What a sensor makes of a picture of radiances.
#include "sensormodel.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace sorvane {
namespace {
// The shares that a pixel gets of a value in it (the first), beside it, and so on; both sides together add up to 1.
std::vector<double> sharesOf(double sigma) {
    constexpr double kReach = 6.0; // standard deviations: what lies farther out is below a part in a hundred millions
    const auto count = static_cast<std::size_t>(std::ceil(kReach * sigma)) + 1;
    std::vector<double> shares(count);
    double sum = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        const auto upTo = [&](double edge) {
            return std::erf((static_cast<double>(i) + edge) / (sigma * std::numbers::sqrt2));
        };
        shares[i] = 0.5 * (upTo(0.5) - upTo(-0.5));
        sum += i == 0 ? shares[i] : 2.0 * shares[i];
    }
    for (double& share : shares)
        share /= sum;
    return shares;
}

// The place within 0 to count - 1 that a place is reflected to at the edges, again and again.
std::ptrdiff_t reflected(std::ptrdiff_t place, std::ptrdiff_t count) {
    const std::ptrdiff_t period = 2 * count;
    place = ((place % period) + period) % period;
    return place < count ? place : period - 1 - place;
}

void blurLine(const std::vector<double>& shares, std::vector<double>& line, std::vector<double>& spread) {
    const auto count = static_cast<std::ptrdiff_t>(line.size());
    const auto reach = static_cast<std::ptrdiff_t>(shares.size()) - 1;
    for (std::ptrdiff_t i = 0; i < count; ++i) {
        double sum = 0.0;
        for (std::ptrdiff_t k = -reach; k <= reach; ++k)
            sum +=
                shares[static_cast<std::size_t>(std::abs(k))] * line[static_cast<std::size_t>(reflected(i + k, count))];
        spread[static_cast<std::size_t>(i)] = sum;
    }
    line.swap(spread);
}

// A number whose bits look random, another one for every input. After Steele, Lea and Flood, "Fast splittable
// pseudorandom number generators", 2014.
std::uint64_t mixed(std::uint64_t number) {
    number += 0x9E3779B97F4A7C15U;
    number = (number ^ (number >> 30U)) * 0xBF58476D1CE4E5B9U;
    number = (number ^ (number >> 27U)) * 0x94D049BB133111EBU;
    return number ^ (number >> 31U);
}

// Above 0, up to 1.
double fraction(std::uint64_t bits) {
    return (static_cast<double>(bits >> 11U) + 1.0) * 0x1p-53;
}
} // namespace

void blur(double sigma, SensorPicture& picture) {
    if (!(sigma > 0.0) || picture.values.empty())
        return;
    const std::vector<double> shares = sharesOf(sigma);
    const auto width = static_cast<std::size_t>(picture.width);
    const auto height = static_cast<std::size_t>(picture.height);
    std::vector<double> values(picture.values.begin(), picture.values.end());
    const auto blurAll = [&](std::size_t lines, std::size_t length, std::size_t toNextLine, std::size_t toNextValue) {
        std::vector<double> line(length);
        std::vector<double> spread(length);
        for (std::size_t number = 0; number < lines; ++number) {
            for (std::size_t i = 0; i < length; ++i)
                line[i] = values[number * toNextLine + i * toNextValue];
            blurLine(shares, line, spread);
            for (std::size_t i = 0; i < length; ++i)
                values[number * toNextLine + i * toNextValue] = line[i];
        }
    };
    blurAll(height, width, width, 1);
    blurAll(width, height, 1, width);
    std::ranges::transform(values, picture.values.begin(), [](double value) { return static_cast<float>(value); });
}

// Pairs of normally distributed numbers after Box and Muller, "A note on the generation of random normal deviates",
// 1958, of which one is used.
void addNoise(double deviation, std::uint64_t seed, std::uint64_t frame, SensorPicture& picture) {
    const std::uint64_t stream = mixed(mixed(seed) ^ frame);
    for (std::size_t i = 0; i < picture.values.size(); ++i) {
        const std::uint64_t first = mixed(stream ^ mixed(2 * i));
        const std::uint64_t second = mixed(stream ^ mixed(2 * i + 1));
        const double normal =
            std::sqrt(-2.0 * std::log(fraction(first))) * std::cos(2.0 * std::numbers::pi * fraction(second));
        picture.values[i] = static_cast<float>(static_cast<double>(picture.values[i]) + deviation * normal);
    }
}

void digitise(int bits, double fullScale, SensorPicture& picture) {
    const double highest = std::exp2(bits) - 1.0;
    for (float& value : picture.values) {
        const double step = std::round(double{value} / fullScale * highest);
        // What is not a number is the lowest step.
        const double kept = step >= 0.0 ? std::min(step, highest) : 0.0;
        value = static_cast<float>(kept / highest * fullScale);
    }
}

void applySensor(const SensorModel& model, std::uint64_t frame, SensorPicture& picture) {
    if (model.blur)
        blur(*model.blur, picture);
    if (model.noise)
        addNoise(*model.noise, model.seed, frame, picture);
    if (model.bits && model.fullScale)
        digitise(*model.bits, *model.fullScale, picture);
}
} // namespace sorvane
