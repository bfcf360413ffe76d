// The table of runs' place in the viewer: what is loaded as its rows, and what its keys do.
#pragma once

#include <functional>
#include <map>
#include <optional>

#include <QObject>

#include "engagementlist.h"
#include "keyfilter.h"
#include "measuretext.h"
#include "runmemory.h"

namespace sorvane {
class CurrentEngagement;
class RunTableWindow;

class RunTables : public QObject {
public:
    // The parts that it goes by. Nothing here is owned.
    struct Parts {
        QWidget& window;
        const EngagementList& engagements;
        const CurrentEngagement& current;
        std::function<LengthUnit()> unit;                    // that lengths are told in
        std::function<void(const QStringList& paths)> open;  // files that are dropped
        std::function<void(const LoadedEngagement&)> follow; // in the view that is chosen
        std::function<void()> toggleGhosts;
        KeyFilter::Run runKey; // of the table's window, which has the viewer's keys
    };

    RunTables(const Parts& parts, QObject* parent);
    ~RunTables() override;

    // Whether a file is a database, by its first bytes, or by its name.
    static bool isDatabase(const QString& path);

    // Opens the window, or closes it.
    void toggle();
    // Opens the window with a database.
    void show(const QString& database);
    // Another engagement may be the current one.
    void refresh();
    // There may be another unit.
    void showUnit();

private:
    RunTableWindow& table();
    Outcome<std::string> loaded();
    RunRow rowOf(const LoadedEngagement& engagement) const;
    const LoadedEngagement* find(const QString& path) const;
    std::optional<Problem> follow(const std::string& path, const QString& database);

    Parts parts_;
    RunTableWindow* table_ = nullptr;     // of the window's children
    std::map<EngagementId, RunRow> rows_; // of the unit that they were made with
    LengthUnit rowsUnit_ = LengthUnit::Unstated;
    std::optional<RunMemory> memory_; // what the table reads
};
} // namespace sorvane
