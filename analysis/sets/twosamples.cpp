// Whether two samples may come from one distribution.
#include "twosamples.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <numeric>
#include <vector>

namespace sorvane {
namespace {
// Equal values of both samples together.
struct Tie {
    std::int64_t ofA = 0;
    std::int64_t ofB = 0;

    std::int64_t count() const { return ofA + ofB; }
};

std::vector<Tie> tiesOf(std::span<const double> a, std::span<const double> b) {
    std::vector<Tie> ties;
    auto nextA = a.begin();
    auto nextB = b.begin();
    while (nextA != a.end() || nextB != b.end()) {
        const double value = nextB == b.end() || (nextA != a.end() && *nextA < *nextB) ? *nextA : *nextB;
        const auto endA = std::find_if(nextA, a.end(), [value](double other) { return other != value; });
        const auto endB = std::find_if(nextB, b.end(), [value](double other) { return other != value; });
        ties.push_back({endA - nextA, endB - nextB});
        nextA = endA;
        nextB = endB;
    }
    return ties;
}

// The chance that a random order of n and m values comes as far as `distance`, in units of 1/(n m), at the end of a
// tie. Of a random order of i and j values the last is one of the i with the chance i/(i + j).
double chanceOfDistance(const std::vector<Tie>& ties, std::int64_t n, std::int64_t m, std::int64_t distance) {
    std::vector<char> isEnd(static_cast<std::size_t>(n + m + 1), 0);
    std::int64_t place = 0;
    for (const Tie& tie : ties)
        isEnd[static_cast<std::size_t>(place += tie.count())] = 1;
    std::vector<double> chance(static_cast<std::size_t>(m + 1), 0.0); // by j, of the i so far
    for (std::int64_t i = 0; i <= n; ++i)
        for (std::int64_t j = 0; j <= m; ++j) {
            double& here = chance[static_cast<std::size_t>(j)];
            if (isEnd[static_cast<std::size_t>(i + j)] != 0 && std::abs(i * m - j * n) >= distance)
                here = 1.0;
            else if (i + j > 0)
                here = (static_cast<double>(i) * here +
                        (j == 0 ? 0.0 : static_cast<double>(j) * chance[static_cast<std::size_t>(j - 1)])) /
                       static_cast<double>(i + j);
        }
    return chance.back();
}

// Of Kolmogorov's distribution.
double chanceBeyond(double lambda) {
    constexpr double kSure = 0.2; // what lies below is less than 1e-10
    constexpr int kMostTerms = 100;
    if (lambda < kSure)
        return 1.0;
    double sum = 0.0;
    for (int k = 1; k <= kMostTerms; ++k)
        sum += (k % 2 == 1 ? 2.0 : -2.0) * std::exp(-2.0 * k * k * lambda * lambda);
    return std::clamp(sum, 0.0, 1.0);
}

// The chance that so many of the pooled values, taken at random, have a sum of twice their ranks as far from its mean
// as `sum` or farther.
double chanceOfRankSum(const std::vector<Tie>& ties, std::int64_t taken, std::int64_t sum) {
    const std::int64_t all =
        std::accumulate(ties.begin(), ties.end(), std::int64_t{0}, [](auto n, const Tie& t) { return n + t.count(); });
    const auto sums = static_cast<std::size_t>(all * (all + 1) + 1);
    // How many choices there are, by their number of values and their sum.
    std::vector<std::vector<double>> choices(static_cast<std::size_t>(taken + 1), std::vector<double>(sums, 0.0));
    choices[0][0] = 1.0;
    std::int64_t place = 0;
    for (const Tie& tie : ties) {
        const auto rank = static_cast<std::size_t>(2 * place + tie.count() + 1); // twice the middle of the tie's
        place += tie.count();
        for (std::int64_t i = 0; i < tie.count(); ++i)
            for (std::size_t k = choices.size() - 1; k > 0; --k)
                for (std::size_t s = rank; s < sums; ++s)
                    choices[k][s] += choices[k - 1][s - rank];
    }
    const std::vector<double>& ways = choices.back();
    const std::int64_t mean = taken * (all + 1);
    double far = 0.0;
    for (std::size_t s = 0; s < sums; ++s)
        if (std::abs(static_cast<std::int64_t>(s) - mean) >= std::abs(sum - mean))
            far += ways[s];
    return far / std::accumulate(ways.begin(), ways.end(), 0.0);
}
} // namespace

KolmogorovSmirnov kolmogorovSmirnov(std::span<const double> a, std::span<const double> b) {
    constexpr std::int64_t kMostExactPairs = 10000000;
    const auto n = static_cast<std::int64_t>(a.size());
    const auto m = static_cast<std::int64_t>(b.size());
    const std::vector<Tie> ties = tiesOf(a, b);
    std::int64_t distance = 0; // in units of 1/(n m)
    Tie below;
    for (const Tie& tie : ties) {
        below = {below.ofA + tie.ofA, below.ofB + tie.ofB};
        distance = std::max(distance, std::abs(below.ofA * m - below.ofB * n));
    }
    const double share = static_cast<double>(distance) / (static_cast<double>(n) * static_cast<double>(m));
    if (distance == 0)
        return {share, 1.0, true};
    if (n <= kMostExactPairs / m)
        return {share, chanceOfDistance(ties, n, m, distance), true};
    const double size = static_cast<double>(n) * static_cast<double>(m) / static_cast<double>(n + m);
    return {share, chanceBeyond(share * std::sqrt(size)), false};
}

MannWhitney mannWhitney(std::span<const double> a, std::span<const double> b) {
    constexpr double kMostExact = 40;
    const auto n = static_cast<double>(a.size());
    const auto m = static_cast<double>(b.size());
    const double all = n + m;
    const std::vector<Tie> ties = tiesOf(a, b);
    std::int64_t rankSum = 0; // twice that of a
    std::int64_t place = 0;
    double tied = 0.0;
    for (const Tie& tie : ties) {
        rankSum += tie.ofA * (2 * place + tie.count() + 1);
        place += tie.count();
        const auto count = static_cast<double>(tie.count());
        tied += count * count * count - count;
    }
    const double greater = static_cast<double>(rankSum) / 2.0 - n * (n + 1.0) / 2.0;
    if (all <= kMostExact)
        return {greater / (n * m), chanceOfRankSum(ties, static_cast<std::int64_t>(n), rankSum), true};
    const double variance = n * m / 12.0 * (all + 1.0 - tied / (all * (all - 1.0)));
    const double distance = std::max(std::abs(greater - n * m / 2.0) - 0.5, 0.0);
    const double p = variance > 0.0 ? std::erfc(distance / std::sqrt(2.0 * variance)) : 1.0;
    return {greater / (n * m), p, false};
}
} // namespace sorvane
