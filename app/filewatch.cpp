// Notices when a loaded file changes on disk.
#include "filewatch.h"

#include <iterator>

#include <QFileInfo>
#include <QSet>
#include <QTimer>

#include "engagementlist.h"

namespace sorvane {
namespace {
constexpr int kSettlingMilliseconds = 300;
} // namespace

FileWatch::FileWatch(const EngagementList& engagements, Tell tell)
    : engagements_(engagements), tell_(std::move(tell)), check_(new QTimer(this)) {
    connect(&engagements, &EngagementList::fileRead, this, [this](const LoadedEngagement& engagement) {
        watch(engagement.path(), engagement.stamp());
    });
    connect(&engagements, &EngagementList::removed, this, [this] { dropUnlisted(); });
    check_->setSingleShot(true);
    connect(check_, &QTimer::timeout, this, [this] { check(); });
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, [this] { scheduleCheck(); });
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, [this] { scheduleCheck(); });
}

void FileWatch::watch(const QString& path, const FileStamp& stamp) {
    files_[path] = {.stamp = stamp};
    const QString folder = QFileInfo(path).absolutePath();
    if (!watcher_.directories().contains(folder))
        watcher_.addPath(folder);
    // What is watched may be the file that stood here before.
    watcher_.removePath(path);
    watcher_.addPath(path);
    // It may have changed while it was being read.
    scheduleCheck();
}

void FileWatch::dropUnlisted() {
    QSet<QString> listed;
    for (const LoadedEngagement& engagement : engagements_)
        listed.insert(engagement.path());
    for (auto file = files_.begin(); file != files_.end();) {
        const bool isListed = listed.contains(file.key());
        if (!isListed)
            watcher_.removePath(file.key());
        file = isListed ? std::next(file) : files_.erase(file);
    }
}

void FileWatch::scheduleCheck() {
    if (!check_->isActive())
        check_->start(kSettlingMilliseconds);
}

void FileWatch::check() {
    QStringList changed;
    for (auto file = files_.begin(); file != files_.end(); ++file) {
        const FileStamp now = fileStamp(file.key());
        if (!now.exists() || now == file->stamp || file->isTold)
            continue;
        file->isTold = true;
        changed << file.key();
    }
    if (!changed.isEmpty())
        tell_(changed);
}
} // namespace sorvane
