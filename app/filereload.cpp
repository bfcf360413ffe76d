// Reads all loaded files again.
#include "filereload.h"

#include <utility>

#include "aircraftwidget.h"
#include "engagementlist.h"
#include "etxyz.h"

namespace sorvane {
namespace {
// Initialises the bodies and the terrain of data that were read again, with what can be taken over from the old ones.
void initHardbodies(const LoadedEngagement& loaded, EngagementReading& reading, AircraftWidget& view) {
    etxyz& old = loaded.data();
    etxyz& fresh = *reading.data;
    if (!old.areHardbodiesInitialized()) {
        view.initHardbodiesIfReady(fresh);
        return;
    }
    const ModelFiles& before = loaded.modelFiles();
    const ModelFiles& now = reading.modelFiles;
    // What is taken over is away while the rest is initialised, so that it isn't read again.
    const auto takeOver = [](auto& from, auto& to, bool isSame) {
        if (isSame)
            to = nullptr;
        return isSame ? std::move(from) : nullptr;
    };
    auto target = takeOver(old.target, fresh.target, before.target == now.target);
    auto threat = takeOver(old.threat, fresh.threat, before.threat == now.threat);
    auto terrain = takeOver(old.terrain, fresh.terrain, before.terrain == now.terrain);
    view.initHardbodiesIfReady(fresh);
    if (target != nullptr)
        fresh.target = std::move(target);
    if (threat != nullptr)
        fresh.threat = std::move(threat);
    if (terrain != nullptr)
        fresh.terrain = std::move(terrain);
}
} // namespace

QStringList reloadAll(EngagementList& engagements, AircraftWidget& view) {
    QStringList unreadable;
    for (const LoadedEngagement& loaded : engagements) {
        EngagementReading reading = readEngagement(loaded.path());
        if (reading.data != nullptr)
            initHardbodies(loaded, reading, view);
        else
            unreadable << loaded.path();
        engagements.replace(loaded.id(), std::move(reading));
    }
    view.setKeyframe(view.currentTime());
    return unreadable;
}
} // namespace sorvane
