// A trajectory file as the viewer has loaded it: its engagement, and what is known of the file.
#include "loadedengagement.h"

#include <memory>
#include <new>
#include <utility>

#include <QFile>
#include <QFileInfo>
#include <QHash>

#include "filecaches.h"

namespace sorvane {
namespace {
// Takes out of the library's memory what is not as some engagement has seen it.
void forgetWhatChanged(const ModelFiles& files) {
    static QHash<QString, FileStamp> known;
    for (const auto part : {&ModelFiles::target, &ModelFiles::threat, &ModelFiles::terrain})
        for (const StampedFile& file : files.*part) {
            const auto seen = known.constFind(file.path);
            if (seen != known.constEnd() && *seen == file.stamp)
                continue;
            forgetFile(QFile::encodeName(file.path).toStdString());
            known.insert(file.path, file.stamp);
        }
}
} // namespace

EngagementReading parseEngagement(const QString& path, const ReadWatch& watch) {
    EngagementReading reading{.stamp = fileStamp(path), .data = std::make_unique<etxyz>()};
    try {
        const TrajectoryInput input = openTrajectory(path, [&] {
            reading.isStopped = reading.isStopped || (watch && !watch());
            return !reading.isStopped;
        });
        if (input.device != nullptr)
            reading.header = reading.data->parse(input);
    } catch (const std::bad_alloc&) {
        reading.data->keyframes.clear();
    }
    if (reading.isStopped || std::as_const(reading.data->keyframes).isEmpty())
        reading.data.reset();
    else
        reading.modelFiles = modelFilesOf(*reading.data);
    return reading;
}

void completeReading(EngagementReading& reading) {
    if (reading.data == nullptr)
        return;
    forgetWhatChanged(reading.modelFiles);
    reading.data->makeModels();
}

EngagementReading readEngagement(const QString& path, const ReadWatch& watch) {
    EngagementReading reading = parseEngagement(path, watch);
    completeReading(reading);
    return reading;
}

namespace {
constexpr std::size_t kMostAhead = 32; // engagements that wait while the window draws
} // namespace

EngagementReadAhead::EngagementReadAhead(const QStringList& paths, const ReadWatch& watch)
    : ReadAhead(
          static_cast<std::size_t>(paths.size()), usableProcessors(), kMostAhead, [paths, watch](std::size_t number) {
              return parseEngagement(paths[static_cast<qsizetype>(number)], watch);
          }) {}

LoadedEngagement::LoadedEngagement(QString path, EngagementReading reading)
    : path_(std::move(path)), reading_(std::move(reading)) {}

LoadedEngagement::~LoadedEngagement() = default;

QString LoadedEngagement::name() const {
    return QFileInfo(path_).fileName();
}

const EngagementFacts& LoadedEngagement::facts() const {
    if (!facts_)
        facts_ = factsOf(*reading_.data->samples.series());
    return *facts_;
}

std::shared_ptr<const MeasuredEngagement> LoadedEngagement::measured(LengthUnit unit) const {
    std::shared_ptr<const MeasuredEngagement> measured = measured_.lock();
    if (measured == nullptr || measured->unit() != unit) {
        const etxyz& data = *reading_.data;
        measured = std::make_shared<MeasuredEngagement>(data.samples.series(), data.fieldOfView, unit);
        measured_ = measured;
    }
    return measured;
}

std::unique_ptr<etxyz> LoadedEngagement::take(EngagementReading reading) {
    facts_.reset();
    measured_.reset();
    return std::exchange(reading_, std::move(reading)).data;
}
} // namespace sorvane
