// A trajectory file as the viewer has loaded it: its engagement, and what is known of the file.
#pragma once

#include <memory>
#include <optional>

#include <QString>
#include <QStringList>

#include "engagementfacts.h"
#include "engagementid.h"
#include "etxyz.h"
#include "filestamp.h"
#include "measuredengagement.h"
#include "modelfiles.h"
#include "readahead.h"
#include "trajectoryinput.h"
#include "trajectoryreader.h"

namespace sorvane {
// What one reading of a trajectory file gave.
struct EngagementReading {
    FileStamp stamp;               // of the file, from before it was read
    std::unique_ptr<etxyz> data;   // null when the file has no samples
    TrajectoryFileHeader header{}; // as the file gives it
    ModelFiles modelFiles{};       // of the data, from before bodies and terrain are read
    bool isStopped = false;
};

// Stopped by `watch`, it gives no data.
EngagementReading readEngagement(const QString& path, const ReadWatch& watch = {});
// Its two halves: what needs the files alone and may run on any thread, `watch` included, and what goes by the
// library's memory of bodies, terrain and atmospheres.
EngagementReading parseEngagement(const QString& path, const ReadWatch& watch = {});
void completeReading(EngagementReading& reading);

// The first halves of many, on all processors.
class EngagementReadAhead : public ReadAhead<EngagementReading> {
public:
    explicit EngagementReadAhead(const QStringList& paths, const ReadWatch& watch = {});
};

// Lives in an EngagementList, which alone changes it.
class LoadedEngagement {
public:
    // Takes a reading with data.
    LoadedEngagement(QString path, EngagementReading reading);
    ~LoadedEngagement();

    // Stays the same when the file is read again.
    EngagementId id() const { return id_; }
    const QString& path() const { return path_; }
    QString name() const; // of the file
    const FileStamp& stamp() const { return reading_.stamp; }
    const TrajectoryFileHeader& header() const { return reading_.header; }
    const ModelFiles& modelFiles() const { return reading_.modelFiles; }
    // Its sub-menu is there once the engagement is in the window.
    etxyz& data() const { return *reading_.data; }

    // Worked out when they are first asked for.
    const EngagementFacts& facts() const;
    // The same for all who hold it; worked out again when nobody does, so hold it for as long as you go by it.
    std::shared_ptr<const MeasuredEngagement> measured(LengthUnit unit) const;

private:
    friend class EngagementList;

    // Returns the data that there were.
    std::unique_ptr<etxyz> take(EngagementReading reading);

    EngagementId id_ = newEngagementId();
    QString path_;
    EngagementReading reading_;
    mutable std::optional<EngagementFacts> facts_;
    mutable std::weak_ptr<const MeasuredEngagement> measured_;
};
} // namespace sorvane
