// Makes the pictures of the documentation: opens the real window on the demonstration, uses it as a person would, and
// saves what it shows. usage: make_pictures DEMONSTRATION_FOLDER PICTURE_FOLDER
#include <clocale>
#include <cmath>
#include <cstdio>

#include <GL/freeglut.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSurfaceFormat>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include "aircraftwidget.h"
#include "new_sorvane.h"
#include "surfaceformat.h"

namespace {
class Photographer {
public:
    Photographer(const QDir& demonstration, const QDir& pictures) : pictures_(pictures) {
        window_.show();
        for (const char* const name : {"ETXYZ.OUT.turn", "ETXYZ.OUT.crossing.Z", "ETXYZ.OUT.sparse"})
            window_.loadEtxyzFile(demonstration.filePath(QString::fromLatin1(name)));
    }

    void goTo(double seconds) { window_.findChild<QDoubleSpinBox*>("doubleSpinBox")->setValue(seconds); }

    // Chooses a view entry of engagement number `engagement` in its sub-menu.
    void choose(int engagement, const QString& text) {
        for (QAction* const action : subMenu(engagement)->actions())
            if (action->text() == text && !action->isChecked())
                action->trigger();
    }

    void check(const QString& action, bool isChecked) { window_.findChild<QAction*>(action)->setChecked(isChecked); }

    // Hides an engagement, or shows a hidden one.
    void toggle(int engagement) { subMenu(engagement)->actions().first()->trigger(); }

    void scroll(int notches) {
        const QPointF middle(view_->width() / 2.0, view_->height() / 2.0);
        QWheelEvent event(
            middle, view_->mapToGlobal(middle), {}, {0, 120 * notches}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
            false);
        QCoreApplication::sendEvent(view_, &event);
    }

    // Drags with the left button.
    void drag(int right, int down) {
        const QPoint from(view_->width() / 2, view_->height() / 2);
        QTest::mousePress(view_, Qt::LeftButton, {}, from);
        const QPointF to = from + QPoint(right, down);
        QMouseEvent move(QEvent::MouseMove, to, view_->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view_, &move);
        QTest::mouseRelease(view_, Qt::LeftButton, {}, to.toPoint());
    }

    // Presses Record, answers its dialog with a file in the temporary folder, and lets the clock make some frames.
    void recordFor(int milliseconds) {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QTimer::singleShot(500, &window_, [this] {
            auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            dialog->findChild<QLineEdit*>("fileNameEdit")->setText(movies_.filePath("engagement.avi"));
            QTest::keyClick(dialog, Qt::Key_Return);
        });
        window_.findChild<QPushButton*>("recordButton")->click();
        QTest::qWait(milliseconds);
        window_.findChild<QPushButton*>("playButton")->click();
    }

    bool take(const QString& name) {
        QTest::qWait(200); // lets the window settle
        const QString path = pictures_.filePath(name);
        if (window_.grab().save(path))
            return true;
        std::fprintf(stderr, "can't write %s\n", qPrintable(path));
        return false;
    }

private:
    QMenu* subMenu(int engagement) const {
        return window_.findChild<QMenu*>("menuETXYZ_Files")->actions().at(engagement + 1)->menu();
    }

    QDir pictures_;
    QTemporaryDir movies_;
    new_sorvane window_;
    AircraftWidget* view_ = window_.findChild<AircraftWidget*>("glWidget");
};
} // namespace

int main(int argc, char** argv) {
    QSurfaceFormat::setDefaultFormat(viewSurfaceFormat());
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_pictures DEMONSTRATION_FOLDER PICTURE_FOLDER\n");
        return 2;
    }
    glutInit(&argc, argv);
    Photographer photographer{QDir(QFile::decodeName(argv[1])), QDir(QFile::decodeName(argv[2]))};

    photographer.toggle(1);
    photographer.toggle(2);
    photographer.choose(0, "View Threat");
    photographer.goTo(9.0);
    photographer.drag(1500, 100);
    photographer.scroll(-31);
    bool isWritten = photographer.take("window.png");

    photographer.choose(0, "View Target");
    photographer.goTo(12.0);
    photographer.drag(650, 200);
    photographer.scroll(-34);
    isWritten = photographer.take("target-view.png") && isWritten;

    photographer.choose(0, "View Gyro");
    photographer.goTo(8.2);
    isWritten = photographer.take("gyro-view.png") && isWritten;

    photographer.choose(0, "View Target");
    photographer.goTo(2.5);
    photographer.drag(-150, 250);
    photographer.scroll(5);
    isWritten = photographer.take("target.png") && isWritten;

    photographer.choose(0, "View Threat");
    photographer.goTo(4.0);
    photographer.drag(-900, 200);
    photographer.scroll(6);
    isWritten = photographer.take("threat.png") && isWritten;

    photographer.choose(0, "View Free");
    photographer.goTo(4.01);
    isWritten = photographer.take("free-view.png") && isWritten;

    photographer.check("actionShow_Terrain", true);
    photographer.choose(0, "View Target");
    photographer.goTo(9.0);
    photographer.drag(700, 250);
    photographer.scroll(-36);
    isWritten = photographer.take("terrain.png") && isWritten;

    photographer.toggle(0);
    photographer.toggle(1);
    photographer.choose(1, "View Target");
    photographer.goTo(5.0);
    photographer.drag(1300, 300);
    photographer.scroll(-38);
    isWritten = photographer.take("terrain-set.png") && isWritten;
    photographer.check("actionShow_Terrain", false);
    photographer.toggle(1);
    photographer.toggle(0);

    photographer.choose(0, "View Target");
    photographer.goTo(9.0);
    photographer.drag(300, 100);
    photographer.scroll(-30);
    photographer.recordFor(1500);
    isWritten = photographer.take("recording.png") && isWritten;
    return isWritten ? 0 : 1;
}
