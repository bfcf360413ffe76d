// A trajectory file as the viewer has loaded it: its engagement, and what is known of the file.
#include "loadedengagement.h"

#include <memory>
#include <new>
#include <utility>

#include <QFile>
#include <QFileInfo>
#include <QHash>

#include "atmfile.h"
#include "engagementfiles.h"
#include "etxyz.h"
#include "filecaches.h"
#include "trajectoryreader.h"

namespace sorvane {
namespace {
// Takes out of the library's memory what is not as some engagement has seen it. Whether the atmosphere, which is read
// with the trajectory, was seen otherwise.
bool forgetWhatChanged(const ModelFiles& files, const QString& atmosphere) {
    static QHash<QString, FileStamp> known;
    bool isAirChanged = false;
    for (const auto part : {&ModelFiles::target, &ModelFiles::threat, &ModelFiles::terrain})
        for (const StampedFile& file : files.*part) {
            const bool isKnown = known.contains(file.path);
            if (isKnown && known.value(file.path) == file.stamp)
                continue;
            forgetFile(QFile::encodeName(file.path).toStdString());
            isAirChanged = isAirChanged || (isKnown && file.path == atmosphere);
            known.insert(file.path, file.stamp);
        }
    return isAirChanged;
}
} // namespace

EngagementReading readEngagement(const QString& path, const ReadWatch& watch) {
    EngagementReading reading{.stamp = fileStamp(path), .data = std::make_unique<etxyz>()};
    try {
        const TrajectoryInput input = openTrajectory(path, [&] {
            reading.isStopped = reading.isStopped || (watch && !watch());
            return !reading.isStopped;
        });
        if (input.device != nullptr)
            reading.data->load(input);
    } catch (const std::bad_alloc&) {
        reading.data->keyframes.clear();
    }
    if (reading.isStopped || std::as_const(reading.data->keyframes).isEmpty()) {
        reading.data.reset();
        return reading;
    }
    reading.modelFiles = modelFilesOf(*reading.data);
    const QString atmosphere = atmospherePath(reading.data->targetSignatureBase);
    if (forgetWhatChanged(reading.modelFiles, atmosphere)) {
        reading.data->atm = std::make_unique<AtmFile>();
        reading.data->atm->Load(QFile::encodeName(atmosphere).toStdString());
    }
    return reading;
}

LoadedEngagement::LoadedEngagement(QString path, EngagementReading reading)
    : path_(std::move(path)), reading_(std::move(reading)) {}

LoadedEngagement::~LoadedEngagement() = default;

QString LoadedEngagement::name() const {
    return QFileInfo(path_).fileName();
}

const EngagementFacts& LoadedEngagement::facts() const {
    if (!facts_)
        facts_ = factsOf(reading_.data->samples);
    return *facts_;
}

const MeasuredEngagement& LoadedEngagement::measured(LengthUnit unit) const {
    if (!measured_ || measured_->unit() != unit)
        measured_.emplace(reading_.data->samples, reading_.data->fieldOfView, unit);
    return *measured_;
}

std::unique_ptr<etxyz> LoadedEngagement::take(EngagementReading reading) {
    facts_.reset();
    measured_.reset();
    return std::exchange(reading_, std::move(reading)).data;
}
} // namespace sorvane
