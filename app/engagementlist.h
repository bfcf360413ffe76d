// The engagements that the viewer has loaded: their one owner.
#pragma once

#include <functional>
#include <list>
#include <memory>

#include <QObject>

#include "engagementid.h"
#include "loadedengagement.h"

namespace sorvane {
// In load order. Whoever keeps something for an engagement keeps it by its id and hears from the signals what becomes
// of it.
class EngagementList : public QObject {
    Q_OBJECT

public:
    // Ends data that nobody uses any more. Bodies and terrain need the GL context for that in which they were made.
    using End = std::function<void(std::unique_ptr<etxyz> data)>;

    explicit EngagementList(End end, QObject* parent = nullptr);
    ~EngagementList() override;

    // Several files in a row: `settled` waits for its end, or for settle().
    class Series {
    public:
        explicit Series(EngagementList& list) : list_(list) { ++list_.series_; }
        ~Series() {
            --list_.series_;
            settle();
        }
        Series(const Series&) = delete;
        Series& operator=(const Series&) = delete;

        void settle() { list_.settle(); }

    private:
        EngagementList& list_;
    };

    bool isEmpty() const { return engagements_.empty(); }
    std::size_t size() const { return engagements_.size(); }
    std::list<LoadedEngagement>::const_iterator begin() const { return engagements_.begin(); }
    std::list<LoadedEngagement>::const_iterator end() const { return engagements_.end(); }

    // Null when there is none.
    const LoadedEngagement* find(EngagementId id) const;
    // The one that the view follows, or null.
    const LoadedEngagement* selected() const;

    // Adds a reading with data.
    void add(const QString& path, EngagementReading reading);
    // The engagement's file has been read again. Its data make way for the new ones, which take over the sub-menu; a
    // reading without data leaves them.
    void replace(EngagementId id, EngagementReading reading);
    void remove(EngagementId id);
    void clear();

signals:
    void added(const LoadedEngagement& engagement);
    // The old data are still there.
    void replaced(const LoadedEngagement& engagement);
    // After `added`, after `replaced`, and when a reading had no data: the stamp is that of the last reading.
    void fileRead(const LoadedEngagement& engagement);
    // After `fileRead`, once for all of a series: for what goes through all engagements. `hasNew` tells whether some
    // have been added.
    void settled(bool hasNew);
    void aboutToBeRemoved(const LoadedEngagement& engagement);
    void removed(EngagementId id);

private:
    std::list<LoadedEngagement>::iterator place(EngagementId id);
    // Tells, unless nothing has come since it last did.
    void settle();
    void settleIfAlone();

    std::list<LoadedEngagement> engagements_;
    End end_;
    int series_ = 0; // that go on
    bool isUnsettled_ = false;
    bool hasNew_ = false;
};
} // namespace sorvane
