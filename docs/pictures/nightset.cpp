// A set of engagements for the pictures.
#include "nightset.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

#include <QFile>

#include "kinematics.h"
#include "trajectory.h"

namespace sorvane {
namespace {
constexpr double kFieldOfView = 4.0;

// Even draws, of which the standard says what they are, unlike those of its distributions.
class Draws {
public:
    double between(double low, double high) { return low + (high - low) * static_cast<double>(engine_()) / kMost; }

private:
    static constexpr double kMost = 4294967295.0;
    std::mt19937 engine_{20};
};

EngagementPlan plan(double aspect, double firstFlare, Draws& draws) {
    EngagementPlan plan;
    plan.targetStart = {0.0, 0.0, -1000.0};
    plan.targetHeading = 90.0;
    plan.targetSpeed = 240.0;
    const double bank = draws.between(40.0, 70.0);
    plan.targetBank = [=](double time) {
        return -bank * std::clamp((time - firstFlare + 0.5) / 1.5, 0.0, 1.0);
    };
    plan.targetClimb = [](double /*time*/) {
        return -3.0;
    };
    for (int i = 0; i < 4; ++i)
        plan.flares.push_back({firstFlare + 0.4 * i, 1, 1});
    plan.flareBrightness = draws.between(1.0e5, 1.5e9);
    const double bearing = (90.0 + aspect) * std::numbers::pi / 180.0;
    const double distance = draws.between(2600.0, 3600.0);
    plan.threatStart = {distance * std::cos(bearing), distance * std::sin(bearing), -300.0};
    plan.launchOffset = draws.between(-10.0, 10.0);
    plan.launchLoft = draws.between(4.0, 10.0);
    plan.threatSpeed = [](double time) {
        return 60.0 + 560.0 * std::min(1.0, time / 4.5);
    };
    if (draws.between(0.0, 1.0) < 0.35) // the others tell flares from the target
        plan.seekerFieldOfView = kFieldOfView;
    plan.lastTime = 12.0;
    return plan;
}
} // namespace

QStringList writeNightSet(const QDir& folder, int engagements) {
    Draws draws;
    QStringList paths;
    for (int i = 0; i < engagements; ++i) {
        const double aspect = 360.0 * i / engagements;
        const int pattern = i % 3;
        TrajectoryHeader header;
        header.remark = "A night's runs";
        header.colourName = "yellow";
        header.runNumber = i;
        header.threatId = "Missile";
        header.fieldOfView = "4.0";
        const std::string text = trajectoryText(header, fly(plan(aspect, 1.5 + 1.2 * pattern, draws)), Comments::None);
        const QString name =
            QStringLiteral("ETXYZ.OUT.case%1_flare%2").arg(i, 3, 10, QChar(u'0')).arg(QChar(u'A' + pattern));
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::WriteOnly))
            file.write(text.data(), static_cast<qint64>(text.size()));
        paths << file.fileName();
    }
    return paths;
}
} // namespace sorvane
