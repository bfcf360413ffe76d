// Names, focus and tab order of the window's controls, for those who don't see or point.
#include "accessiblenames.h"

#include "aircraftwidget.h"
#include "ui_new_sorvane.h"

namespace sorvane {
namespace {
void describe(QWidget& control, const char* name, const char* description) {
    control.setAccessibleName(QString::fromLatin1(name));
    control.setAccessibleDescription(QString::fromLatin1(description));
}
} // namespace

void makeAccessible(Ui::new_sorvane& form) {
    describe(*form.glWidget, "Engagement view", "The engagements at the current time");
    describe(*form.doubleSpinBox, "Time in seconds", "The current time of all engagements");
    describe(*form.playButton, "Play or pause", "Runs and stops the clock");
    describe(*form.recordButton, "Record", "Records a movie of the view");
    describe(*form.horizontalSlider, "Time in milliseconds", "The current time of all engagements");
    describe(*form.menuBar, "Menu bar", "Files, playback speed and view");

    // The mouse leaves the focus, and with it the keys, where it is.
    for (QWidget* const control :
         {static_cast<QWidget*>(form.playButton), static_cast<QWidget*>(form.recordButton),
          static_cast<QWidget*>(form.horizontalSlider)})
        control->setFocusPolicy(Qt::TabFocus);
    form.doubleSpinBox->setFocusPolicy(Qt::StrongFocus);

    QWidget::setTabOrder(form.glWidget, form.doubleSpinBox);
    QWidget::setTabOrder(form.doubleSpinBox, form.playButton);
    QWidget::setTabOrder(form.playButton, form.recordButton);
    QWidget::setTabOrder(form.recordButton, form.horizontalSlider);
}
} // namespace sorvane
