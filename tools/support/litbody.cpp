// A body as the command line gives it, with the light in which it stands.
#include "litbody.h"

#include <filesystem>

#include <QFile>

#include "atmfile.h"
#include "attitudelight.h"
#include "engagementfiles.h"
#include "inputtexts.h"
#include "loaderguard.h"
#include "measuredengagement.h"
#include "shortestnumber.h"
#include "trajectoryfile.h"

namespace sorvane {
namespace {
Outcome<SignatureLight> lightOf(const std::string& path, const std::array<double, 3>& attitudeDegrees) {
    AtmFile atmosphere;
    bool isRead = false;
    const LoaderOutcome outcome = runLoader([&] { isRead = atmosphere.Load(path); });
    if (!isRead)
        return Problem(path + ": " + (outcome.messages.empty() ? "can't be read" : outcome.messages.back().text));
    return lightAt(atmosphere, attitudeDegrees);
}

std::string nameOfFile(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

std::string bytesOf(const QString& path) {
    return QFile::encodeName(path).toStdString();
}
} // namespace

Outcome<LitBody> bodyAlone(const std::string& geometry, const BodyChoice& files, const LightChoice& choice) {
    const Outcome<SignatureFiles> found = findBodyFiles(geometry, files);
    if (!found)
        return found.problem();
    Outcome<SignatureBody> body = readBody(*found);
    if (!body)
        return body.problem();
    LitBody lit{nameOfFile(geometry), *std::move(body), {}, choice.time.value_or(0.0)};
    lit.body.turnRotors(static_cast<float>(lit.time));
    if (!choice.atmosphere.empty()) {
        const Outcome<SignatureLight> light = lightOf(choice.atmosphere, choice.attitudeDegrees.value_or(Triple{}));
        if (!light)
            return light.problem();
        lit.light = *light;
    }
    return lit;
}

Outcome<LitBody> bodyOfTrajectory(const std::string& path, const BodyChoice& files, const LightChoice& choice) {
    const Outcome<TrajectorySamples> trajectory = readTrajectorySamples(path);
    if (!trajectory)
        return trajectory.problem();
    const MeasuredEngagement engagement(trajectory->series, trajectory->header.fieldOfView);
    const double time = choice.time.value_or(engagement.samples().front().time);
    const std::optional<Moment> moment = engagement.at(time);
    if (!moment)
        return Problem(inputName(path) + ": has no samples around " + shortestText(time) + " s");
    const EngagementFiles named = chooseFiles(trajectory->header);
    // The stock target that is drawn then is another aircraft.
    if (named.isStockTarget && !choice.isThreat)
        return Problem(inputName(path) + ": a file of the target that it names does not exist");
    SignatureFiles bodyFiles =
        choice.isThreat
            ? SignatureFiles{bytesOf(named.threatBrdfPath()), bytesOf(named.threatGeometryPath()),
                             bytesOf(named.threatRadiancePath()), files.rotors}
            : SignatureFiles{bytesOf(named.targetBrdfPath), bytesOf(named.targetGeometryPath()),
                             bytesOf(named.targetRadiancePath()), files.rotors};
    Outcome<SignatureBody> body = readBody(bodyFiles);
    if (!body)
        return body.problem();
    const Triple attitude = blended(*moment, choice.isThreat ? &Sample::threatAttitude : &Sample::targetAttitude);
    const Outcome<SignatureLight> light =
        lightOf(choice.atmosphere.empty() ? bytesOf(named.atmospherePath()) : choice.atmosphere, attitude);
    if (!light)
        return light.problem();
    LitBody lit{
        nameOfFile(inputName(path)) + (choice.isThreat ? " threat" : " target"), *std::move(body), *light, time};
    lit.body.turnRotors(static_cast<float>(time));
    return lit;
}
} // namespace sorvane
