// Reads all loaded files again.
#include "filereload.h"

#include <algorithm>
#include <utility>

#include <QMenu>
#include <QSlider>

#include "aircraftwidget.h"
#include "factsofengagements.h"
#include "etxyz.h"
#include "filewatch.h"
#include "keptengagements.h"
#include "playbackclock.h"

void FileReload::registerLoaded(const etxyz& engagement, const FileStamp& stamp) {
    registerLoaded(engagement, stamp, modelFilesOf(engagement));
}

void FileReload::registerLoaded(const etxyz& engagement, const FileStamp& stamp, ModelFiles files) {
    places_.facts.add(engagement);
    places_.watch.watch(engagement.menu->title(), stamp);
    modelFiles_[&engagement] = std::move(files);
}

QStringList FileReload::reloadAll() {
    QStringList unreadable;
    for (etxyz* const old : QList(places_.engagements)) {
        const QString path = old->menu->title();
        const FileStamp stamp = fileStamp(path);
        auto fresh = std::make_unique<etxyz>();
        fresh->LoadETXYZ(path);
        if (fresh->keyframes.isEmpty()) {
            places_.watch.watch(path, stamp);
            unreadable << path;
            continue;
        }
        etxyz& loaded = *fresh;
        ModelFiles files = modelFilesOf(loaded); // before they are read
        replace(*old, std::move(fresh), files);
        registerLoaded(loaded, stamp, std::move(files));
    }
    places_.view.setKeyframe(places_.view.currentTime());
    places_.view.update();
    return unreadable;
}

void FileReload::replace(etxyz& old, std::unique_ptr<etxyz> fresh, const ModelFiles& files) {
    etxyz& successor = *fresh;
    successor.menu = std::exchange(old.menu, nullptr);
    takeOverModels(old, successor, files);
    std::ranges::replace(places_.engagements, &old, &successor);
    places_.view.replaceEtxyz(old, successor);
    places_.facts.forget(old);
    modelFiles_.erase(&old);
    places_.slider.setMaximum(std::max(places_.slider.maximum(), endOnSlider(successor)));

    std::unique_ptr<etxyz> ended = exchangeKept(old, std::move(fresh));
    places_.view.makeCurrent();
    ended.reset();
    places_.view.doneCurrent();
}

void FileReload::takeOverModels(etxyz& old, etxyz& fresh, const ModelFiles& now) {
    if (!old.areHardbodiesInitialized()) {
        places_.view.initHardbodiesIfReady(fresh);
        return;
    }
    const ModelFiles& before = modelFiles_.at(&old);
    // What is taken over is away while the rest is initialised, so that it isn't read again.
    const auto takeOver = [](auto& from, auto& to, bool isSame) {
        if (isSame)
            to = nullptr;
        return isSame ? std::move(from) : nullptr;
    };
    auto target = takeOver(old.target, fresh.target, before.target == now.target);
    auto threat = takeOver(old.threat, fresh.threat, before.threat == now.threat);
    auto terrain = takeOver(old.terrain, fresh.terrain, before.terrain == now.terrain);
    places_.view.initHardbodiesIfReady(fresh);
    if (target != nullptr)
        fresh.target = std::move(target);
    if (threat != nullptr)
        fresh.threat = std::move(threat);
    if (terrain != nullptr)
        fresh.terrain = std::move(terrain);
}
