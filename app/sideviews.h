// Further view windows: which there are, what their keys do, when they end.
#pragma once

#include <vector>

#include <QObject>
#include <QPointer>

#include "keyfilter.h"
#include "sideview.h"

class AircraftWidget;
class QDoubleSpinBox;

namespace sorvane {
class CurrentEngagement;
class ViewNotice;

class SideViews : public QObject {
public:
    // The parts that they go by. Nothing here is owned.
    struct Parts {
        QWidget& window;
        AircraftWidget& view;
        const CurrentEngagement& current;
        QDoubleSpinBox& box;
        ViewNotice& notice;
        KeyFilter::Run runKey; // of their windows, which have the viewer's keys
    };

    explicit SideViews(const Parts& parts);
    ~SideViews() override;

    // Opens another one, with the first of the seeker's view, target view, threat view and overview that nobody shows,
    // and else with the main view's; says so when there are as many as can be.
    void open();
    // Another engagement may be the current one.
    void refresh();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::vector<SideView*> views() const;
    void chooseUnseen(SideView& fresh) const;
    void place(SideView& fresh) const;
    void run(SideView& view, KeyCommand command);
    void name(SideView& view) const;
    void closeAll();

    Parts parts_;
    std::vector<QPointer<SideView>> views_; // closed ones are null
};
} // namespace sorvane
