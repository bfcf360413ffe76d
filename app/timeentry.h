// Typing a time into the time box.
#pragma once

#include <QObject>

class QDoubleSpinBox;
class QWidget;

namespace sorvane {
// The decimal sign is a point whatever the user's locale, as everywhere else in the program; a comma types one. Return
// ends the typing: the keys are the view's again.
class TimeEntry : public QObject {
public:
    static void installOn(QDoubleSpinBox& box, QWidget& view);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    TimeEntry(QDoubleSpinBox& box, QWidget& view);

    QDoubleSpinBox& box_;
    QWidget& view_;
};
} // namespace sorvane
