// Makes the pictures of the documentation: opens the real window on the demonstration, uses it as a person would, and
// saves what it shows. usage: make_pictures DEMONSTRATION_FOLDER PICTURE_FOLDER
#include <clocale>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <memory>

#include <GL/freeglut.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QSurfaceFormat>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include "aircraftwidget.h"
#include "fulldisk.h"
#include "new_sorvane.h"
#include "setpictures.h"
#include "sideview.h"
#include "surfaceformat.h"

using namespace sorvane;

namespace {
struct Shot {
    const char* file = "";
    int engagement = 0; // the only one that is shown
    const char* view = "";
    double seconds = 0.0;
    int right = 0; // a drag with the left button, pixels
    int down = 0;
    int notches = 0; // of the wheel
    bool isOverview = false;
    bool hasTerrain = false;
    bool isRecording = false;
    bool isDiskFull = false; // soon after the recording has begun
    bool isBodySpoilt = false;
    bool hasReadout = false;
    bool isOfPlots = false; // of their window, without the viewer's
    bool hasSideViews = false;
};

constexpr int kVeer = 2; // its number among the engagements

class Photographer {
public:
    Photographer(const QDir& demonstration, const QDir& pictures) : demonstration_(demonstration), pictures_(pictures) {
        view_->setTerrainComesLater(false); // every picture has all of its ground
        window_.show();
        for (const char* const name : {"ETXYZ.OUT.turn", "ETXYZ.OUT.weave.Z", "ETXYZ.OUT.veer", "ETXYZ.OUT.vague"})
            window_.loadEtxyzFile(demonstration.filePath(QString::fromLatin1(name)));
        // What is missing of the last one is no matter of these pictures.
        QTest::mouseClick(window_.findChild<QLabel*>("loadNotice"), Qt::LeftButton);
    }

    bool take(const Shot& shot) {
        showOnly(shot.engagement);
        check("actionShow_Terrain", shot.hasTerrain);
        choose(shot.engagement, QString::fromLatin1(shot.view));
        goTo(shot.seconds);
        if (shot.right != 0 || shot.down != 0)
            drag(shot.right, shot.down);
        scroll(shot.notches);
        if (shot.isOverview)
            QTest::keyClick(view_, Qt::Key_5);
        if (shot.isRecording || shot.isDiskFull)
            record(shot.isDiskFull);
        if (shot.isBodySpoilt)
            reloadSpoilt(demonstration_.filePath("data/tgt4004/tgt4004_b0001_mat0004.brdf"));
        if (shot.hasReadout)
            QTest::keyClick(view_, Qt::Key_H);
        if (shot.isOfPlots)
            return savePlots(QString::fromLatin1(shot.file));
        if (shot.hasSideViews)
            return saveSideViews(QString::fromLatin1(shot.file));
        const bool isSaved = save(window_, QString::fromLatin1(shot.file));
        if (shot.hasReadout)
            QTest::keyClick(view_, Qt::Key_H);
        return isSaved;
    }

private:
    static constexpr int kEngagements = 4;

    void goTo(double seconds) { window_.findChild<QDoubleSpinBox*>("doubleSpinBox")->setValue(seconds); }

    // Chooses a view entry of engagement number `engagement` in its sub-menu.
    void choose(int engagement, const QString& text) {
        for (QAction* const action : subMenu(engagement)->actions())
            if (action->text() == text && !action->isChecked())
                action->trigger();
    }

    void check(const QString& action, bool isChecked) { window_.findChild<QAction*>(action)->setChecked(isChecked); }

    void showOnly(int shown) {
        for (int i = 0; i < kEngagements; ++i) {
            QAction* const toggle = subMenu(i)->actions().first();
            if ((toggle->text() == QLatin1String("Disable")) != (i == shown))
                toggle->trigger();
        }
    }

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
    void record(bool isDiskFull) {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QTimer::singleShot(500, &window_, [this, isDiskFull] {
            auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            dialog->findChild<QLineEdit*>("fileNameEdit")
                ->setText(movies_.filePath(isDiskFull ? "damaged.avi" : "engagement.avi"));
            QTest::keyClick(dialog, Qt::Key_Return);
        });
        window_.findChild<QPushButton*>("recordButton")->click();
        {
            const auto disk = isDiskFull ? std::make_unique<FullDisk>(100000) : nullptr;
            QTest::qWait(1500);
        }
        // First a notice tells of the fault, then the mark does.
        const auto* const notice = window_.findChild<QLabel*>("viewNotice");
        if (isDiskFull && !QTest::qWaitFor([notice] { return notice->text().endsWith("damaged"); }, 20000))
            std::fprintf(stderr, "the recording is not marked as damaged\n");
        window_.findChild<QPushButton*>("playButton")->click();
    }

    // Presses F5 while a file is broken.
    void reloadSpoilt(const QString& path) {
        const QString kept = path + ".kept";
        QFile::rename(path, kept);
        QFile spoilt(path);
        if (spoilt.open(QIODevice::WriteOnly))
            spoilt.write("BRDS\n");
        spoilt.close();
        QTest::keyClick(view_, Qt::Key_F5);
        spoilt.remove();
        QFile::rename(kept, path);
    }

    // With the mouse at a place that tells something.
    bool savePlots(const QString& name) {
        QTest::keyClick(view_, Qt::Key_P);
        auto* const plots = window_.findChild<QWidget*>("plotWindow");
        plots->resize(840, 560);
        QTest::qWait(200);
        QWidget* const plot = plots->findChild<QWidget*>();
        const QPointF place(370.0, 300.0);
        QMouseEvent move(
            QEvent::MouseMove, place, plot->mapToGlobal(place), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(plot, &move);
        const bool isSaved = save(*plots, name);
        QTest::keyClick(view_, Qt::Key_P);
        return isSaved;
    }

    // The viewer with three further views in a column beside it.
    bool saveSideViews(const QString& name) {
        constexpr int kViews = 3;
        constexpr int kGap = 6;
        constexpr int kWidth = 400;
        const int height = (window_.height() - (kViews - 1) * kGap) / kViews;
        QPixmap picture(window_.width() + kGap + kWidth, window_.height());
        picture.fill(Qt::white);
        for (int i = 0; i < kViews; ++i)
            QTest::keyClick(view_, Qt::Key_W);
        QTest::qWait(200);
        QPoint place(window_.width() + kGap, 0);
        for (SideView* const side : window_.findChildren<SideView*>()) {
            side->resize(kWidth, height);
            QTest::qWait(300);
            QPainter(&picture).drawPixmap(place, side->grab());
            place.ry() += height + kGap;
        }
        QPainter(&picture).drawPixmap(0, 0, window_.grab());
        for (SideView* const side : window_.findChildren<SideView*>())
            side->close();
        return save(picture, name);
    }

    bool save(QWidget& window, const QString& name) {
        QTest::qWait(200); // lets the window settle
        return save(window.grab(), name);
    }

    bool save(const QPixmap& picture, const QString& name) {
        const QString path = pictures_.filePath(name);
        if (picture.save(path))
            return true;
        std::fprintf(stderr, "can't write %s\n", qPrintable(path));
        return false;
    }

    QMenu* subMenu(int engagement) const {
        return window_.findChild<QMenu*>("menuETXYZ_Files")->actions().at(engagement + 1)->menu();
    }

    QDir demonstration_;
    QDir pictures_;
    QTemporaryDir movies_;
    new_sorvane window_;
    AircraftWidget* view_ = window_.findChild<AircraftWidget*>("glWidget");
};
} // namespace

int main(int argc, char** argv) {
    QSurfaceFormat::setDefaultFormat(viewSurfaceFormat());
    qputenv("SORVANE_NO_SETTINGS", "1");
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    std::signal(SIGXFSZ, SIG_IGN); // a full disk kills nobody
    if (argc != 3) {
        std::fprintf(stderr, "usage: make_pictures DEMONSTRATION_FOLDER PICTURE_FOLDER\n");
        return 2;
    }
    glutInit(&argc, argv);
    Photographer photographer{QDir(QFile::decodeName(argv[1])), QDir(QFile::decodeName(argv[2]))};

    const Shot shots[] = {
        {.file = "window.png", .view = "View Target", .seconds = 13.0, .isOverview = true, .hasTerrain = true},
        {.file = "target-view.png", .view = "View Target", .seconds = 12.0, .right = 650, .down = 200, .notches = -34},
        {.file = "gyro-view.png", .view = "View Gyro", .seconds = 8.2},
        {.file = "target.png", .view = "View Target", .seconds = 2.5, .right = -150, .down = 250, .notches = 5},
        {.file = "threat.png", .view = "View Threat", .seconds = 4.0, .right = -900, .down = 200, .notches = 6},
        {.file = "free-view.png", .view = "View Free", .seconds = 4.01}, // from where the last one was taken
        {.file = "overview.png", .view = "View Target", .seconds = 14.0, .isOverview = true},
        {.file = "side-views.png",
         .engagement = kVeer,
         .view = "View Threat",
         .seconds = 4.2,
         .right = -900,
         .down = 200,
         .notches = 2,
         .hasTerrain = true,
         .hasSideViews = true},
        {.file = "terrain.png",
         .view = "View Target",
         .seconds = 9.0,
         .right = 700,
         .down = 250,
         .notches = -36,
         .hasTerrain = true},
        {.file = "terrain-set.png",
         .engagement = 1,
         .view = "View Target",
         .seconds = 5.0,
         .right = 1300,
         .down = 300,
         .notches = -38,
         .hasTerrain = true},
        {.file = "read-out.png",
         .view = "View Threat",
         .seconds = 12.5,
         .right = 1500,
         .down = 100,
         .notches = -31,
         .hasReadout = true},
        {.file = "veer-launch.png", .engagement = kVeer, .view = "View Gyro", .seconds = 3.4},
        {.file = "veer-flare.png", .engagement = kVeer, .view = "View Gyro", .seconds = 4.2},
        {.file = "veer-lost.png", .engagement = kVeer, .view = "View Gyro", .seconds = 5.0, .hasReadout = true},
        {.file = "plot-window.png", .engagement = kVeer, .view = "View Gyro", .seconds = 5.0, .isOfPlots = true},
        {.file = "veer-miss.png",
         .engagement = kVeer,
         .view = "View Target",
         .seconds = 6.35,
         .isOverview = true,
         .hasTerrain = true},
        {.file = "veer-after.png",
         .engagement = kVeer,
         .view = "View Target",
         .seconds = 9.9,
         .isOverview = true,
         .hasTerrain = true},
        {.file = "recording.png",
         .view = "View Target",
         .seconds = 9.0,
         .right = 300,
         .down = 100,
         .notches = -30,
         .isRecording = true},
        {.file = "damaged.png",
         .view = "View Target",
         .seconds = 2.5,
         .right = -150,
         .down = 250,
         .notches = 5,
         .isDiskFull = true},
        {.file = "reload-refused.png",
         .view = "View Target",
         .seconds = 2.5,
         .right = -150,
         .down = 250,
         .notches = 5,
         .isBodySpoilt = true},
    };
    bool isWritten = true;
    for (const Shot& shot : shots)
        isWritten = photographer.take(shot) && isWritten;
    isWritten = takeSetPictures(QDir(QFile::decodeName(argv[2]))) && isWritten;
    return isWritten ? 0 : 1;
}
