// A trajectory file as the viewer has loaded it: its engagement, and what is known of the file.
#include "loadedengagement.h"

#include <memory>
#include <utility>

#include <QFile>
#include <QHash>

#include "atmfile.h"
#include "engagementfiles.h"

#include "etxyz.h"
#include "filecaches.h"

namespace sorvane {
namespace {
// Takes out of the library's memory what has changed since some engagement was made of it. Whether there was any.
bool forgetWhatChanged(const ModelFiles& files) {
    static QHash<QString, FileStamp> known;
    bool hasChanged = false;
    for (const auto part : {&ModelFiles::target, &ModelFiles::threat, &ModelFiles::terrain})
        for (const StampedFile& file : files.*part) {
            const auto before = known.find(file.path);
            if (before != known.end() && *before != file.stamp) {
                forgetFile(QFile::encodeName(file.path).toStdString());
                hasChanged = true;
            }
            known.insert(file.path, file.stamp);
        }
    return hasChanged;
}
} // namespace

EngagementReading readEngagement(const QString& path) {
    EngagementReading reading{.stamp = fileStamp(path), .data = std::make_unique<etxyz>(), .modelFiles = {}};
    reading.data->LoadETXYZ(path);
    if (std::as_const(reading.data->keyframes).isEmpty())
        reading.data.reset();
    else
        reading.modelFiles = modelFilesOf(*reading.data);
    if (reading.data != nullptr && forgetWhatChanged(reading.modelFiles)) {
        reading.data->atm = std::make_unique<AtmFile>();
        reading.data->atm->Load(QFile::encodeName(atmospherePath(reading.data->targetSignatureBase)).toStdString());
    }
    return reading;
}

LoadedEngagement::LoadedEngagement(QString path, EngagementReading reading)
    : path_(std::move(path)), reading_(std::move(reading)) {}

LoadedEngagement::~LoadedEngagement() = default;

const EngagementFacts& LoadedEngagement::facts() const {
    if (!facts_)
        facts_ = factsOf(reading_.data->samples);
    return *facts_;
}

std::unique_ptr<etxyz> LoadedEngagement::take(EngagementReading reading) {
    facts_.reset();
    return std::exchange(reading_, std::move(reading)).data;
}
} // namespace sorvane
