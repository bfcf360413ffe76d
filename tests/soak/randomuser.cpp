// Somebody who uses the main window in every way, at random.
#include "randomuser.h"

#include <utility>

#include <QApplication>
#include <QDoubleSpinBox>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

#include "aircraftwidget.h"
#include "new_sorvane.h"
#include "sideview.h"

using namespace sorvane;

namespace {
// Posted, since a dialog that asks another question would keep the sender waiting.
void postKey(QWidget& receiver, Qt::Key key) {
    QCoreApplication::postEvent(&receiver, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier));
    QCoreApplication::postEvent(&receiver, new QKeyEvent(QEvent::KeyRelease, key, Qt::NoModifier));
}
} // namespace

RandomUser::RandomUser(new_sorvane& window, QStringList trajectories, QString folder, unsigned seed)
    : window_(window), view_(window.findChild<AircraftWidget*>("glWidget")),
      filesMenu_(window.findChild<QMenu*>("menuETXYZ_Files")), trajectories_(std::move(trajectories)),
      folder_(std::move(folder)), random_(seed) {
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    answerDialogs();
}

void RandomUser::answerDialogs() {
    auto* const timer = new QTimer(&window_);
    QObject::connect(timer, &QTimer::timeout, &window_, [this] {
        QWidget* const modal = QApplication::activeModalWidget();
        if (modal == nullptr)
            return;
        auto* const name = modal->findChild<QLineEdit*>("fileNameEdit");
        if (name == nullptr || below(3) == 0) {
            postKey(*modal, Qt::Key_Escape);
            return;
        }
        const bool isPicture = qobject_cast<QFileDialog*>(modal)->windowTitle().contains("image", Qt::CaseInsensitive);
        name->setText(folder_ + (isPicture ? "/picture.png" : "/movie.avi"));
        postKey(*modal, Qt::Key_Return);
    });
    timer->start(50);
}

void RandomUser::act() {
    constexpr std::pair<int, void (RandomUser::*)()> kWays[] = {
        {40, &RandomUser::pressKey},   {15, &RandomUser::scrub},      {8, &RandomUser::toggle},
        {8, &RandomUser::choose},      {16, &RandomUser::useMouse},   {2, &RandomUser::resizeWindow},
        {2, &RandomUser::rewriteFile}, {1, &RandomUser::record},      {3, &RandomUser::openMenu},
        {1, &RandomUser::dropFiles},   {4, &RandomUser::useSideView},
    };
    window_.show(); // the user may have closed it
    int lot = below(100);
    for (const auto& [weight, way] : kWays) {
        lot -= weight;
        if (lot < 0) {
            (this->*way)();
            break;
        }
    }
    QTest::qWait(below(40));
}

void RandomUser::pressKey() {
    constexpr Qt::Key kKeys[] = {Qt::Key_Space,       Qt::Key_Left,
                                 Qt::Key_Right,       Qt::Key_Home,
                                 Qt::Key_End,         Qt::Key_J,
                                 Qt::Key_K,           Qt::Key_L,
                                 Qt::Key_I,           Qt::Key_O,
                                 Qt::Key_C,           Qt::Key_E,
                                 Qt::Key_BracketLeft, Qt::Key_BracketRight,
                                 Qt::Key_Backslash,   Qt::Key_1,
                                 Qt::Key_2,           Qt::Key_3,
                                 Qt::Key_4,           Qt::Key_F5,
                                 Qt::Key_F11,         Qt::Key_H,
                                 Qt::Key_F1,          Qt::Key_Question,
                                 Qt::Key_Escape,      Qt::Key_Tab,
                                 Qt::Key_F12,         Qt::Key_S,
                                 Qt::Key_5,           Qt::Key_Period,
                                 Qt::Key_Backspace,   Qt::Key_Up,
                                 Qt::Key_PageDown,    Qt::Key_PageUp,
                                 Qt::Key_X,           Qt::Key_A,
                                 Qt::Key_N,           Qt::Key_U,
                                 Qt::Key_G,           Qt::Key_P,
                                 Qt::Key_R,           Qt::Key_T,
                                 Qt::Key_B,           Qt::Key_W};
    constexpr Qt::KeyboardModifier kModifiers[] = {
        Qt::NoModifier, Qt::NoModifier, Qt::NoModifier, Qt::ShiftModifier, Qt::ControlModifier};
    const Qt::Key key = kKeys[below(std::size(kKeys))];
    const Qt::KeyboardModifier modifier = kModifiers[below(std::size(kModifiers))];
    if (key == Qt::Key_C && modifier == Qt::ControlModifier)
        return; // leaves the program
    QWidget* const focused = window_.focusWidget();
    QTest::keyClick(focused == nullptr ? &window_ : focused, key, modifier);
}

void RandomUser::scrub() {
    auto* const slider = window_.findChild<QSlider*>("horizontalSlider");
    if (below(2) == 0)
        slider->setValue(below(slider->maximum() + 1));
    else
        window_.findChild<QDoubleSpinBox*>("doubleSpinBox")->setValue(below(30000) * 0.001);
}

void RandomUser::toggle() {
    constexpr const char* kActions[] = {
        "actionShow_Drop_Lines",
        "actionShow_History_Lines",
        "actionShow_Terrain",
        "actionShow_Grid",
        "action1_0",
        "actionX2",
        "actionX0_5"};
    const int lot = below(static_cast<int>(std::size(kActions)) + 1);
    if (lot == static_cast<int>(std::size(kActions)))
        window_.findChild<QPushButton*>("playButton")->click();
    else
        window_.findChild<QAction*>(kActions[lot])->trigger();
}

void RandomUser::choose() {
    const QList<QAction*> files = filesMenu_->actions().mid(1);
    const QList<QAction*> entries = files.at(below(static_cast<int>(files.size())))->menu()->actions();
    entries.at(below(static_cast<int>(entries.size())))->trigger();
}

// Opens a menu and walks about in it; one of its entries closes the window.
void RandomUser::openMenu() {
    constexpr Qt::Key kKeys[] = {Qt::Key_Down,  Qt::Key_Down, Qt::Key_Up, Qt::Key_Left,
                                 Qt::Key_Right, Qt::Key_H,    Qt::Key_F5, Qt::Key_Return};
    auto* const bar = window_.findChild<QMenuBar*>("menuBar");
    const QList<QAction*> menus = bar->actions();
    QAction* const menu = menus.at(below(static_cast<int>(menus.size())));
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(menu).center());
    for (int i = 0; i < 6; ++i)
        if (QWidget* const open = QApplication::activePopupWidget())
            QTest::keyClick(open, kKeys[below(std::size(kKeys))]);
    while (QWidget* const open = QApplication::activePopupWidget())
        open->close();
}

// Nothing unloads a file, so only the first few drops bring one.
void RandomUser::dropFiles() {
    constexpr int kLoadingDrops = 3;
    QMimeData files;
    files.setUrls({QUrl::fromLocalFile(folder_ + "/missing"), QUrl("https://example.invalid/file")});
    if (drops_++ < kLoadingDrops)
        files.setUrls(files.urls() << QUrl::fromLocalFile(trajectories_.first()));
    QDropEvent event(QPointF(5, 5), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(
        below(2) == 0 ? static_cast<QWidget*>(&window_) : window_.findChild<QLineEdit*>(), &event);
}

void RandomUser::useMouse() {
    const auto anywhere = [this] {
        return QPoint(below(std::max(view_->width(), 1)), below(std::max(view_->height(), 1)));
    };
    const QPoint from = anywhere();
    const int lot = below(4);
    if (lot == 0) {
        const QPoint turn(0, below(2) == 0 ? 120 : -120);
        QWheelEvent event(
            from, view_->mapToGlobal(QPointF(from)), {}, turn, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view_, &event);
    } else if (lot == 1) {
        QTest::mouseDClick(view_, Qt::LeftButton, {}, from);
    } else {
        const Qt::MouseButton button = lot == 2 ? Qt::LeftButton : Qt::RightButton;
        const QPoint to = anywhere();
        QTest::mousePress(view_, button, {}, from);
        QMouseEvent move(QEvent::MouseMove, to, view_->mapToGlobal(QPointF(to)), Qt::NoButton, button, Qt::NoModifier);
        QCoreApplication::sendEvent(view_, &move);
        QTest::mouseRelease(view_, button, {}, to);
    }
}

// Opens another one, or does something to one that is open.
void RandomUser::useSideView() {
    const QList<SideView*> open = window_.findChildren<SideView*>();
    const int lot = below(8);
    if (open.isEmpty() || lot == 0) {
        QTest::keyClick(view_, Qt::Key_W);
        return;
    }
    SideView* const side = open.at(below(static_cast<int>(open.size())));
    constexpr Qt::Key kKeys[] = {Qt::Key_1, Qt::Key_2, Qt::Key_3,        Qt::Key_4,     Qt::Key_5, Qt::Key_B,
                                 Qt::Key_W, Qt::Key_U, Qt::Key_PageDown, Qt::Key_Space, Qt::Key_F5};
    if (lot == 1)
        side->close();
    else if (lot == 2)
        side->resize(50 + below(500), 50 + below(400));
    else if (lot == 3)
        QTest::mouseDClick(side, Qt::LeftButton, {}, side->rect().center());
    else
        QTest::keyClick(side, kKeys[below(std::size(kKeys))]);
}

void RandomUser::resizeWindow() {
    window_.resize(300 + below(700), 250 + below(500));
}

// As a simulation does it that writes a run anew: sometimes the file is cut off, sometimes it is whole.
void RandomUser::rewriteFile() {
    const QString path = trajectories_.at(below(static_cast<int>(trajectories_.size())));
    QFile original(path + ".original");
    if (!original.exists())
        QFile::copy(path, original.fileName());
    if (!original.open(QIODevice::ReadOnly))
        return;
    const QByteArray text = original.readAll();
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(below(2) == 0 ? text : text.left(below(static_cast<int>(text.size()))));
}

void RandomUser::record() {
    window_.findChild<QPushButton*>("recordButton")->click();
}
