// The real main window on a real display, and files for it to load.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "aircraftwidget.h"
#include "engagementlist.h"
#include "new_sorvane.h"
#include "trajectorytext.h"

namespace sorvane {
// Counts how often what it filters the events of is painted.
struct PaintCounter : QObject {
    int paints = 0;
    bool eventFilter(QObject* watched, QEvent* event) override {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }
};

struct WindowTest : testing::Test {
    QTemporaryDir folder;
    new_sorvane window;
    QDoubleSpinBox* const box = window.findChild<QDoubleSpinBox*>("doubleSpinBox");
    QSlider* const slider = window.findChild<QSlider*>("horizontalSlider");
    QPushButton* const playButton = window.findChild<QPushButton*>("playButton");
    AircraftWidget* const view = window.findChild<AircraftWidget*>("glWidget");
    QMenu* const filesMenu = window.findChild<QMenu*>("menuETXYZ_Files");
    QTimer* const timer = window.findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    QLabel* const notice = window.findChild<QLabel*>("viewNotice");
    QLabel* const loads = window.findChild<QLabel*>("loadNotice");
    QLabel* const readout = window.findChild<QLabel*>("viewReadout");

    void showWindow() {
        window.show();
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    // Loads an engagement from 0 s to `end` seconds; returns its path.
    QString loadUntil(double end, const QString& name = "ETXYZ.OUT.1") {
        const QString path = writeTrajectoryUntil(folder.filePath(name), end);
        window.loadEtxyzFile(path);
        return path;
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(view, key, modifiers); }
    static void focus(QWidget* control) {
        control->setFocus();
        ASSERT_TRUE(QTest::qWaitFor([&] { return control->hasFocus(); }));
    }
    // A modal dialog runs an event loop of its own; `act` is called with the next one of its type inside that loop.
    template <class Act> void answerDialog(const Act& act) { answerModal<QFileDialog>(act); }
    template <class Dialog, class Act> void answerModal(const Act& act) {
        QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        QTimer::singleShot(0, &window, [act] {
            Dialog* dialog = nullptr;
            ASSERT_TRUE(QTest::qWaitFor([&] {
                dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
                return dialog != nullptr && dialog->isVisible();
            }));
            act(*dialog);
        });
    }
    static void enterName(QFileDialog& dialog, const QString& path) {
        dialog.findChild<QLineEdit*>("fileNameEdit")->setText(path);
        QTest::keyClick(&dialog, Qt::Key_Return);
    }
    // What the screen shows of a widget once it has come to rest. Grabbing from a widget would draw it anew and so hide
    // that nobody asked for it.
    static QImage onScreen(const QWidget& widget) {
        QTest::qWait(150);
        const QPoint corner = widget.mapToGlobal(QPoint(0, 0));
        return widget.screen()
            ->grabWindow(0, corner.x(), corner.y(), widget.width(), widget.height())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    }
    // The texts over the view.
    void hideTexts() const {
        for (QLabel* const text : view->findChildren<QLabel*>())
            text->hide();
    }
    EngagementList& engagements() { return *window.findChild<EngagementList*>(); }
    QAction* action(const QString& name) { return window.findChild<QAction*>(name); }
    // Entry `entry` of the sub-menu of engagement number `engagement`, both from 0; entry 0 hides and shows.
    QAction* entry(int engagement, int entry) {
        return filesMenu->actions().at(engagement + 1)->menu()->actions().at(entry);
    }
};
} // namespace sorvane
