// The slider of the time: where a click takes it, and the marks over it, by real events and by what the screen shows.
#include "windowfixture.h"

#include <QHelpEvent>
#include <QToolTip>

#include "rows.h"
#include "timemarks.h"

using namespace sorvane;

namespace {
struct TimeMarksTest : WindowTest {
    TimeMarks* const marks = dynamic_cast<TimeMarks*>(slider->findChild<QWidget*>("timeMarks"));

    // The columns of the screen in which the slider's upper edge has the colour of a mark.
    std::vector<int> markedColumns() {
        const QImage shown = onScreen(*slider);
        std::vector<int> columns;
        for (int x = 0; x < shown.width(); ++x)
            if (shown.pixelColor(x, 1) == slider->palette().color(QPalette::WindowText))
                columns.push_back(x);
        return columns;
    }
    QString toolTipAt(int x) {
        QToolTip::hideText();
        EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
        const QPoint place(x, slider->height() / 2);
        QHelpEvent event(QEvent::ToolTip, place, slider->mapToGlobal(place));
        QCoreApplication::sendEvent(slider, &event);
        return QToolTip::text();
    }
};
} // namespace

TEST_F(TimeMarksTest, AClickOnTheGrooveGoesThere) {
    showWindow();
    loadUntil(20.0);
    EXPECT_EQ(slider->pageStep(), 10);
    for (const double time : {15.0, 4.0, 0.0, 20.0}) {
        QTest::mouseClick(slider, Qt::LeftButton, {}, QPoint(marks->place(time), slider->height() / 2));
        EXPECT_NEAR(box->value(), time, 20.0 / slider->width()) << time;
    }
}

TEST_F(TimeMarksTest, EventsAndTheLoopsEndsStandOverTheSliderUnderTheirNames) {
    showWindow();
    view->setFocus();
    EXPECT_EQ(markedColumns(), std::vector<int>()) << "nothing is loaded";
    loadUntil(20.0);
    EXPECT_EQ(markedColumns(), (std::vector<int>{marks->place(0.0), marks->place(20.0)}));
    EXPECT_EQ(toolTipAt(marks->place(20.0) - 3), "Last sample: 20.000 s");
    EXPECT_EQ(toolTipAt(slider->width() / 2), slider->toolTip());

    box->setValue(5.0);
    QTest::keyClick(view, Qt::Key_I);
    box->setValue(10.0);
    QTest::keyClick(view, Qt::Key_O);
    box->setValue(15.0);
    EXPECT_EQ(toolTipAt(marks->place(5.0)), "In point: 5.000 s");
    EXPECT_EQ(toolTipAt(marks->place(10.0)), "Out point: 10.000 s");
    const QImage shown = onScreen(*slider);
    for (const double time : {5.0, 10.0})
        EXPECT_EQ(shown.pixelColor(marks->place(time), shown.height() - 1), slider->palette().color(QPalette::Link));

    const LoadedEngagement& first = *engagements().begin();
    engagements().remove(first.id());
    EXPECT_EQ(markedColumns(), std::vector<int>()) << "the marks go with their engagement";
}

TEST_F(TimeMarksTest, MarksMoveWithTheRangeOfTheSliderAndItsSize) {
    showWindow();
    loadUntil(10.0);
    const int before = marks->place(10.0);
    loadUntil(20.0, "ETXYZ.OUT.2");
    EXPECT_LT(marks->place(10.0), before - 100);
    EXPECT_EQ(markedColumns().back(), marks->place(10.0)) << "of the engagement that is followed";
    window.resize(window.width() + 160, window.height());
    ASSERT_TRUE(QTest::qWaitFor([&] { return marks->width() == slider->width(); }));
    EXPECT_EQ(markedColumns().back(), marks->place(10.0));
}
