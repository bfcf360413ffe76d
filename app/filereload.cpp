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
#include "filecaches.h"
#include "messages.h"

namespace sorvane {
namespace {
bool isWhole(AircraftWidget&, Hardbody& body) {
    return body.isWhole();
}

// A tile tells only when it loads.
bool isWhole(AircraftWidget& view, Terrain& terrain) {
    return view.loadTiles(terrain) && terrain.isWhole();
}

// Brings the bodies and the terrain of data that were read again to what they were, or to what their files now hold.
class ModelReload {
public:
    ModelReload(const LoadedEngagement& loaded, EngagementReading& reading, AircraftWidget& view)
        : loaded_(loaded), reading_(reading), view_(view),
          atmosphere_(atmospherePath(reading.data->targetSignatureBase)) {
        const MessageCollection collected;
        if (!AtmFile().Load(QFile::encodeName(atmosphere_).toStdString()))
            for (const Message& message : collected.messages())
                atmosphereFault_ = QString::fromStdString(message.text);
    }

    void run() {
        // All are away but the one whose turn it is, so that nothing else is read.
        etxyz& fresh = *reading_.data;
        auto target = std::move(fresh.target);
        auto threat = std::move(fresh.threat);
        auto terrain = std::move(fresh.terrain);
        view_.initHardbodiesIfReady(fresh);
        target = brought(&etxyz::target, std::move(target), "target", &ModelFiles::target);
        threat = brought(&etxyz::threat, std::move(threat), "threat", &ModelFiles::threat);
        terrain = brought(&etxyz::terrain, std::move(terrain), "terrain", &ModelFiles::terrain);
        fresh.target = std::move(target);
        fresh.threat = std::move(threat);
        fresh.terrain = std::move(terrain);
        if (hasKeptAir_)
            fresh.atm = std::move(loaded_.data().atm);
    }
    const QStringList& kept() const { return kept_; }

private:
    template <class Part> using Owned = std::unique_ptr<Part>;

    template <class Part>
    Owned<Part>
    brought(Owned<Part> etxyz::*part, Owned<Part> fresh, const char* name, StampedFiles ModelFiles::*files) {
        Owned<Part>& old = loaded_.data().*part;
        const StampedFiles& before = loaded_.modelFiles().*files;
        StampedFiles& now = reading_.modelFiles.*files;
        if (before == now)
            return std::exchange(old, nullptr);
        const QStringList changed = changedFiles(before, now);
        // Bodies are drawn without an atmosphere, too, so that nothing else would tell that it is lost.
        const bool isAirLost = !atmosphereFault_.isEmpty() && changed.contains(atmosphere_);
        hasKeptAir_ = hasKeptAir_ || isAirLost;
        fresh = initialised(part, std::move(fresh));
        const QStringList lost = lostFiles(before, now);
        if ((isFit(fresh) && !isAirLost && lost.isEmpty()) || !isFit(old))
            return fresh;
        end(part, std::move(fresh));
        QStringList names;
        for (const QString& path : lost.isEmpty() ? changed : lost)
            names << QFileInfo(path).fileName();
        const QString why = !lost.isEmpty() ? QStringLiteral("it is no longer there")
                            : isAirLost     ? atmosphereFault_
                                            : complaint(part);
        kept_ << QStringLiteral("the %1 stays as it was, %2%3 can't be used: %4")
                     .arg(name, names.size() > 1 ? QStringLiteral("one of ") : QString())
                     .arg(names.join(QStringLiteral(", ")), why);
        now = before; // what is shown is still made of them
        return std::exchange(old, nullptr);
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

    // Ends a part with the context in which it was made.
    template <class Part> void end(Owned<Part> etxyz::*part, Owned<Part> rejected) {
        auto holder = std::make_unique<etxyz>();
        (*holder).*part = std::move(rejected);
        view_.endEtxyz(std::move(holder));
    }

    template <class Part> Owned<Part> initialised(Owned<Part> etxyz::*part, Owned<Part> fresh) {
        (*reading_.data).*part = std::move(fresh);
        view_.initHardbodiesIfReady(*reading_.data);
        return std::move((*reading_.data).*part);
    }

    template <class Part> bool isFit(const Owned<Part>& part) { return part != nullptr && isWhole(view_, *part); }

    // The loaders' first word on a part that can't be used. They have printed it; what they say once more goes here.
    template <class Part> QString complaint(Owned<Part> etxyz::*part) {
        const MessageCollection collected;
        Owned<Part> again = initialised(part, std::make_unique<Part>());
        isFit(again);
        end(part, std::move(again));
        for (const Message& message : collected.messages())
            if (message.isError || !isTerrainNews(message.text))
                return QString::fromStdString(message.text);
        return QStringLiteral("the terminal says why");
    }

    const LoadedEngagement& loaded_;
    EngagementReading& reading_;
    AircraftWidget& view_;
    QString atmosphere_;
    QString atmosphereFault_; // empty when it can be read
    bool hasKeptAir_ = false; // the old atmosphere serves on
    QStringList kept_;
};

void forgetChangedFiles(const LoadedEngagement& loaded) {
    const ModelFiles& before = loaded.modelFiles();
    const ModelFiles now = modelFilesOf(loaded.data());
    for (const auto part : {&ModelFiles::target, &ModelFiles::threat, &ModelFiles::terrain})
        for (const QString& path : changedFiles(before.*part, now.*part))
            forgetFile(QFile::encodeName(path).toStdString());
}
} // namespace

ReloadResult reloadAll(EngagementList& engagements, AircraftWidget& view) {
    // All of them first: engagements share files.
    for (const LoadedEngagement& loaded : engagements)
        forgetChangedFiles(loaded);
    ReloadResult result;
    for (const LoadedEngagement& loaded : engagements) {
        EngagementReading reading = readEngagement(loaded.path());
        if (reading.data == nullptr) {
            result.unreadable << loaded.path();
        } else if (!loaded.data().areHardbodiesInitialized()) {
            view.initHardbodiesIfReady(*reading.data);
        } else {
            ModelReload models(loaded, reading, view);
            models.run();
            result.kept << models.kept();
        }
        engagements.replace(loaded.id(), std::move(reading));
    }
    result.kept.removeDuplicates();
    view.setKeyframe(view.currentTime());
    return result;
}
} // namespace sorvane
