// Notices when a loaded file changes on disk.
#pragma once

#include <functional>

#include <QFileSystemWatcher>
#include <QMap>
#include <QObject>
#include <QStringList>

#include "filestamp.h"

class QTimer;

namespace sorvane {
class EngagementList;

// Tells of each file once until it is read again, however often it changes: a simulation may be writing it. Folders are
// watched with their files, because editors put a new file in the old one's place.
class FileWatch : public QObject {
public:
    using Tell = std::function<void(const QStringList& paths)>;

    // Watches the files of the engagements in the list, which must outlive it.
    FileWatch(const EngagementList& engagements, Tell tell);

private:
    struct Watched {
        FileStamp stamp;
        bool isTold = false;
    };

    void watch(const QString& path, const FileStamp& stamp);
    void dropUnlisted();
    void scheduleCheck();
    void check();

    const EngagementList& engagements_;
    Tell tell_;
    QFileSystemWatcher watcher_;
    QTimer* check_; // waits for the dust of a change to settle
    QMap<QString, Watched> files_;
};
} // namespace sorvane
