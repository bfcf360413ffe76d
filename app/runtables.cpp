// The table of runs' place in the viewer: what is loaded as its rows, and what its keys do.
#include "runtables.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QScreen>

#include "currentengagement.h"
#include "etxyz.h"
#include "filedrop.h"
#include "openingproblem.h"
#include "preferences.h"
#include "runlayout.h"
#include "runtablewindow.h"
#include "runvalues.h"

namespace sorvane {
namespace {
constexpr QSize kSize(1180, 640); // of a new window
constexpr int kPieceMilliseconds = 40;
constexpr QByteArrayView kDatabaseHead("SQLite format 3");

// The file of a run: a path that was said relative to somewhere lies below the viewer's folder or the database's.
QString fileOf(const std::string& path, const QString& database) {
    const QString said = QFile::decodeName(path.c_str());
    const QString beside = QFileInfo(database).dir().filePath(said);
    return QFileInfo(said).isRelative() && !QFileInfo::exists(said) && QFileInfo::exists(beside) ? beside : said;
}
} // namespace

RunTables::RunTables(const Parts& parts, QObject* parent) : QObject(parent), parts_(parts) {
    const auto changed = [this] {
        if (table_ != nullptr)
            table_->loadedHaveChanged();
    };
    connect(&parts_.engagements, &EngagementList::fileRead, this, [this, changed](const LoadedEngagement& read) {
        rows_.erase(read.id());
        changed();
    });
    connect(&parts_.engagements, &EngagementList::removed, this, [this, changed](EngagementId id) {
        rows_.erase(id);
        changed();
    });
}

RunTables::~RunTables() {
    if (table_ != nullptr)
        Preferences().keepGeometry(*table_);
}

bool RunTables::isDatabase(const QString& path) {
    QFile file(path);
    return path.endsWith(QLatin1String(".sqlite"), Qt::CaseInsensitive) ||
           (QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) &&
            file.read(kDatabaseHead.size()) == kDatabaseHead);
}

void RunTables::toggle() {
    const bool isNew = table_ == nullptr;
    RunTableWindow& window = table();
    if (isNew)
        window.showLoaded();
    window.setVisible(isNew || !window.isVisible());
}

void RunTables::show(const QString& database) {
    table().showDatabase(QFileInfo(database).absoluteFilePath());
    table().show();
    table().raise();
}

void RunTables::refresh() {
    if (table_ != nullptr)
        table_->showFollowed();
}

void RunTables::showUnit() {
    if (table_ != nullptr)
        table_->loadedHaveChanged();
}

RunTableWindow& RunTables::table() {
    if (table_ != nullptr)
        return *table_;
    table_ = new RunTableWindow(
        &parts_.window,
        {.loaded = [this] { return loaded(); },
         .isFollowed =
             [this](const std::string& path) {
                 const LoadedEngagement* const current = parts_.current.get();
                 const QFileInfo file(QFile::decodeName(path.c_str()));
                 return current != nullptr && file.fileName() == current->name() && file == QFileInfo(current->path());
             },
         .follow = [this](const std::string& path, const QString& database) { return follow(path, database); },
         .toggleGhosts = parts_.toggleGhosts});
    const QRect screen = parts_.window.screen()->availableGeometry();
    table_->resize(kSize.boundedTo(screen.size()));
    Preferences().restoreGeometry(*table_);
    new KeyFilter(*table_, parts_.runKey);
    new FileDrop(*table_, parts_.open);
    return *table_;
}

// Rows stay until their file is read again, so that another engagement costs one row. A piece of many at a time, so
// that the window lives.
Outcome<std::string> RunTables::loaded() {
    const LengthUnit unit = parts_.unit();
    if (unit != rowsUnit_)
        rows_.clear();
    rowsUnit_ = unit;
    std::vector<RunRow> rows;
    QElapsedTimer working;
    working.start();
    for (const LoadedEngagement& engagement : parts_.engagements) {
        const auto known = rows_.find(engagement.id());
        if (known == rows_.end() && working.elapsed() > kPieceMilliseconds) {
            table_->loadedHaveChanged(); // goes on soon
            break;
        }
        rows.push_back(known == rows_.end() ? rows_[engagement.id()] = rowOf(engagement) : known->second);
    }
    Outcome<RunMemory> made = RunMemory::make(RunLayout::make(unit, {})->columns(), rows);
    if (!made)
        return made.problem();
    memory_ = *std::move(made);
    return memory_->name();
}

RunRow RunTables::rowOf(const LoadedEngagement& engagement) const {
    const std::string path = QFile::encodeName(engagement.path()).toStdString();
    RunRow row{path, runStamp(path), std::vector<RunValue>(RunLayout::make(rowsUnit_, {})->columns().size())};
    putFaults(engagement.data().isWhollyRead ? RunFaults() : lineFaults(path), row.values);
    const MeasuredEngagement measured(engagement.data().samples.series(), engagement.data().fieldOfView, rowsUnit_);
    putEngagement(engagement.header(), measured, row.values);
    return row;
}

const LoadedEngagement* RunTables::find(const QString& path) const {
    const QFileInfo wanted(path);
    for (const LoadedEngagement& engagement : parts_.engagements)
        if (QFileInfo(engagement.path()) == wanted)
            return &engagement;
    return nullptr;
}

std::optional<Problem> RunTables::follow(const std::string& path, const QString& database) {
    const QString file = fileOf(path, database);
    const LoadedEngagement* engagement = find(file);
    if (engagement == nullptr) {
        if (!QFileInfo::exists(file))
            return Problem(path + ": " + problemOfOpening(path).text);
        parts_.open({file});
        engagement = find(file);
    }
    if (engagement == nullptr)
        return Problem(path + ": holds no engagement");
    parts_.follow(*engagement);
    return std::nullopt;
}
} // namespace sorvane
