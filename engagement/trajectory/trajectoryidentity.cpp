// What a trajectory file looks like from outside, before it is read.
#include "trajectoryidentity.h"

#include <algorithm>

namespace sorvane {
bool isNamedLikeTrajectory(std::string_view fileName) {
    return fileName.starts_with("ETXYZ.OUT") || fileName.ends_with(".Z");
}

bool looksLikeTrajectory(const TextHead& head) {
    constexpr std::size_t kTriples[] = {3, 4};
    constexpr std::size_t kPaths[] = {0, 1, 2, 5, 6};
    constexpr std::size_t kFirstRecord = 12;
    return std::ranges::all_of(kTriples, [&](std::size_t line) { return head.numbers(line) >= 3; }) &&
           std::ranges::none_of(kPaths, [&](std::size_t line) { return head.numbers(line) > 0; }) &&
           (head.lineCount() <= kFirstRecord || head.isBlank(kFirstRecord) || head.numbers(kFirstRecord) >= 2);
}
} // namespace sorvane
