// Reads all loaded files again.
#include "filereload.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include <QFile>
#include <QFileInfo>

#include "aircraftwidget.h"
#include "atmfile.h"
#include "engagementfiles.h"
#include "engagementlist.h"
#include "etxyz.h"
#include "messages.h"

namespace sorvane {
namespace {
bool loadWhole(Hardbody& body) {
    return body.isWhole();
}

// A tile tells only when it loads.
bool loadWhole(Terrain& terrain) {
    return terrain.loadAll() && terrain.isWhole();
}

// Brings the bodies and the terrain of data that were read again to what they were, or to what their files now hold.
// Needs the view's GL context current.
class ModelReload {
public:
    ModelReload(const LoadedEngagement& loaded, EngagementReading& reading)
        : loaded_(loaded), reading_(reading), atmosphere_(atmospherePath(reading.data->targetSignatureBase)) {
        const MessageCollection collected;
        if (!AtmFile().Load(QFile::encodeName(atmosphere_).toStdString()))
            for (const Message& message : collected.messages())
                atmosphereFault_ = QString::fromStdString(message.text);
    }

    void run() {
        bring(&etxyz::target, &etxyz::initTarget, "target", &ModelFiles::target);
        bring(&etxyz::threat, &etxyz::initThreat, "threat", &ModelFiles::threat);
        bring(&etxyz::terrain, &etxyz::initTerrain, "terrain", &ModelFiles::terrain);
        reading_.data->hardbodiesInitialized = true;
        if (hasKeptAir_)
            reading_.data->atm = std::move(loaded_.data().atm);
    }
    const QStringList& kept() const { return kept_; }

private:
    using Initialise = bool (etxyz::*)();

    template <class Part>
    void bring(
        std::unique_ptr<Part> etxyz::*part, Initialise initialise, const char* name, StampedFiles ModelFiles::*files) {
        std::unique_ptr<Part>& old = loaded_.data().*part;
        std::unique_ptr<Part>& fresh = (*reading_.data).*part;
        const StampedFiles& before = loaded_.modelFiles().*files;
        StampedFiles& now = reading_.modelFiles.*files;
        if (before == now) {
            fresh = std::move(old);
            return;
        }
        const QStringList changed = changedFiles(before, now);
        const QStringList lost = lostFiles(before, now);
        // Bodies are drawn without an atmosphere, too, so that nothing else would tell that it is lost.
        const bool isAirLost = !atmosphereFault_.isEmpty() && changed.contains(atmosphere_);
        hasKeptAir_ = hasKeptAir_ || isAirLost;
        const bool isFit = (reading_.data.get()->*initialise)() && loadWhole(*fresh);
        if (isFit && !isAirLost && lost.isEmpty())
            return;
        QStringList names;
        for (const QString& path : lost.isEmpty() ? changed : lost)
            names << QFileInfo(path).fileName();
        const bool isKept = old != nullptr && old->isWhole();
        const QString why = !lost.isEmpty() ? QStringLiteral("it is no longer there")
                            : isAirLost     ? atmosphereFault_
                                            : complaint(fresh, initialise);
        kept_ << QStringLiteral("the %1 %2%3%4 can't be used: %5")
                     .arg(
                         name, isKept ? QStringLiteral("stays as it was, ") : QStringLiteral("is lost, "),
                         names.size() > 1 ? QStringLiteral("one of ") : QString(), names.join(QStringLiteral(", ")),
                         why);
        if (!isKept)
            return;
        fresh = std::move(old);
        now = before; // what is shown is still made of them
    }

    // The files that were there, when others are to take their place. With one of them gone, stock files do.
    static QStringList lostFiles(const StampedFiles& before, const StampedFiles& now) {
        QStringList lost;
        for (const StampedFile& file : before)
            if (file.stamp.exists() && !fileStamp(file.path).exists() &&
                std::ranges::find(now, file.path, &StampedFile::path) == now.end())
                lost << file.path;
        return lost;
    }

    // The loaders' first word on a part that can't be used. They have printed it; what they say once more goes here.
    template <class Part> QString complaint(std::unique_ptr<Part>& part, Initialise initialise) {
        const MessageCollection collected;
        part = std::make_unique<Part>();
        if ((reading_.data.get()->*initialise)())
            loadWhole(*part);
        for (const Message& message : collected.messages())
            if (message.isError || !isTerrainNews(message.text))
                return QString::fromStdString(message.text);
        return QStringLiteral("the terminal says why");
    }

    const LoadedEngagement& loaded_;
    EngagementReading& reading_;
    QString atmosphere_;
    QString atmosphereFault_; // empty when it can be read
    bool hasKeptAir_ = false; // the old atmosphere serves on
    QStringList kept_;
};
} // namespace

ReloadResult reloadAll(EngagementList& engagements, AircraftWidget& view) {
    ReloadResult result;
    QStringList paths;
    for (const LoadedEngagement& loaded : engagements)
        paths << loaded.path();
    EngagementReadAhead readings(paths);
    const EngagementList::Series series(engagements);
    for (const LoadedEngagement& loaded : engagements) {
        EngagementReading reading = readings.take();
        completeReading(reading);
        if (reading.data == nullptr) {
            result.unreadable << loaded.path();
        } else if (!loaded.data().areHardbodiesInitialized()) {
            view.initHardbodiesIfReady(*reading.data);
        } else {
            ModelReload models(loaded, reading);
            view.withContext([&models] { models.run(); });
            result.kept << models.kept();
        }
        engagements.replace(loaded.id(), std::move(reading));
    }
    result.kept.removeDuplicates();
    view.setKeyframe(view.currentTime());
    return result;
}
} // namespace sorvane
