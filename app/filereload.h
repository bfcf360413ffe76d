// Reads all loaded files again.
#pragma once

#include <map>
#include <memory>

#include <QList>

#include "modelfiles.h"

class AircraftWidget;
class FactsOfEngagements;
class FileWatch;
class QSlider;
class etxyz;

// Where an engagement that is read again takes the old one's place. Nothing here is owned.
struct ReloadPlaces {
    QList<etxyz*>& engagements;
    AircraftWidget& view;
    QSlider& slider;
    FactsOfEngagements& facts;
    FileWatch& watch;
};

class FileReload {
public:
    explicit FileReload(const ReloadPlaces& places) : places_(places) {}

    // An engagement has been loaded from a file that had this stamp before.
    void registerLoaded(const etxyz& engagement, const FileStamp& stamp);

    // Reads each engagement's file into a fresh engagement. It takes over the old one's menu and place, and its bodies
    // and terrain where their files are the same. A file that now yields no keyframes leaves its engagement as it is;
    // the paths of those are returned. Time, camera and view stay, and the slider's range only grows.
    QStringList reloadAll();

private:
    void registerLoaded(const etxyz& engagement, const FileStamp& stamp, ModelFiles files);
    void replace(etxyz& old, std::unique_ptr<etxyz> fresh, const ModelFiles& files);
    void takeOverModels(etxyz& old, etxyz& fresh, const ModelFiles& now);

    ReloadPlaces places_;
    std::map<const etxyz*, ModelFiles> modelFiles_; // as they were when they were read
};
