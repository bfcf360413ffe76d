// What targets radiate towards their threats, for the plots: worked out beside the window's work.
#pragma once

#include <atomic>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include <QObject>
#include <QString>

#include "background.h"
#include "filestamp.h"
#include "plotwindow.h"
#include "radiometry.h"

class QTimer;

namespace sorvane {
class LoadedEngagement;

// Keeps what it has worked out for the session, by the trajectory's file and the files of the target as they were then.
class TargetRadiation : public QObject {
    Q_OBJECT

public:
    explicit TargetRadiation(QObject* parent);
    ~TargetRadiation() override;

    // What of these is not at hand is worked out, one engagement after the other; what others have under way is given
    // up.
    std::vector<PlotRadiation> of(const std::vector<const LoadedEngagement*>& engagements);

signals:
    // What is being worked out has come further; a text for people.
    void advanced(const QString& text);
    // Another answer may be there.
    void changed();

private:
    // What an answer depends on.
    struct Origin {
        QString path;
        FileStamp stamp;
        StampedFiles target;

        bool operator==(const Origin&) const = default;
    };
    struct Entry {
        Origin origin;
        std::shared_ptr<const TargetRadiometry> radiometry; // null where the target's files can't be used
    };
    struct Running {
        Origin origin;
        QString name;
    };

    static Origin originOf(const LoadedEngagement& engagement);
    PlotRadiation answerFor(const LoadedEngagement& engagement);
    std::shared_ptr<const TargetModel> modelOf(const LoadedEngagement& engagement);
    void start(const LoadedEngagement& engagement, std::shared_ptr<const TargetModel> model);
    void look();
    QString text() const;

    std::map<QString, Entry> known_; // by path
    std::optional<Running> running_;
    std::shared_ptr<std::atomic<double>> share_; // of what is running that is done
    Background<std::shared_ptr<const TargetRadiometry>> work_;
    // Of the engagement that was worked out last; others have the same target, as a rule.
    StampedFiles modelFiles_;
    std::shared_ptr<const TargetModel> model_;
    QTimer* timer_;
};
} // namespace sorvane
