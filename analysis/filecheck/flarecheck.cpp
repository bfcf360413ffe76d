// Whether the flares of a trajectory can be seen.
#include "flarecheck.h"

#include <QString>

namespace sorvane {
namespace {
constexpr double kBlack = 0.05; // a ball of such a grey looks like a hole in the picture

std::string rounded(double value) {
    return QString::number(value, 'g', 2).toStdString();
}
} // namespace

void reportBlackFlares(const BrightestFlares& flares, FindingList& findings) {
    const std::optional<BrightestFlares::Brightest> brightest = flares.brightest();
    if (brightest && brightest->grey < kBlack)
        findings.warning(
            {}, "black flares",
            "all flares are black balls in the view: the brightest, flare " + std::to_string(brightest->at.id) +
                ", has a grey of " + rounded(brightest->grey) + ", and would be white, 1, from a brightness of " +
                rounded(brightnessOfWhite(brightest->at)) + " on");
}
} // namespace sorvane
