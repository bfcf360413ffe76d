// The pictures of a set: its table of runs and its ghosts.
#include "setpictures.h"

#include <algorithm>
#include <cstdio>

#include <QApplication>
#include <QDoubleSpinBox>
#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTest>

#include "aircraftwidget.h"
#include "new_sorvane.h"
#include "nightset.h"
#include "runtablewindow.h"

namespace sorvane {
namespace {
constexpr int kEngagements = 150;

bool save(QWidget& window, const QString& path) {
    QTest::qWait(300); // lets the window settle
    if (window.grab().save(path))
        return true;
    std::fprintf(stderr, "can't write %s\n", qPrintable(path));
    return false;
}

void settle(const RunTableWindow& table) {
    if (!QTest::qWaitFor([&] { return table.isSettled(); }))
        std::fprintf(stderr, "the table of runs does not settle\n");
}

// Brushes the misses of more than 20 units over all aspects.
void brush(RunTableWindow& table) {
    ScatterPlot& plot = table.scatter();
    const auto at = [&](double x, double y) {
        return QPointF(plot.xAxis->coordToPixel(x), plot.yAxis->coordToPixel(y)).toPoint();
    };
    const QPoint from = at(plot.xAxis->range().lower, plot.yAxis->range().upper);
    const QPoint to = at(plot.xAxis->range().upper, 20.0);
    QTest::mousePress(&plot, Qt::LeftButton, {}, from + QPoint(2, 2));
    QMouseEvent move(QEvent::MouseMove, to, plot.mapToGlobal(to), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&plot, &move);
    QTest::mouseRelease(&plot, Qt::LeftButton, {}, to - QPoint(2, 0));
}
} // namespace

bool takeSetPictures(const QDir& pictures) {
    const QTemporaryDir folder;
    new_sorvane window;
    window.show();
    for (const QString& path : writeNightSet(QDir(folder.path()), kEngagements))
        window.loadEtxyzFile(path);
    auto* const view = window.findChild<AircraftWidget*>("glWidget");
    QTest::mouseClick(window.findChild<QLabel*>("loadNotice"), Qt::LeftButton);
    QTest::keyClick(view, Qt::Key_5);
    for (int i = 0; i < 6; ++i)
        QTest::keyClick(view, Qt::Key_Minus);
    window.findChild<QDoubleSpinBox*>("doubleSpinBox")->setValue(4.5);
    QTest::keyClick(view, Qt::Key_G);
    QTest::qWait(3000); // until all have their colours
    const bool isWritten = save(window, pictures.filePath(QStringLiteral("ghosts.png")));

    QTest::keyClick(view, Qt::Key_T);
    auto& table = dynamic_cast<RunTableWindow&>(*window.findChild<QWidget*>("runTable"));
    settle(table);
    const auto& columns = table.model().columns();
    const auto miss = std::ranges::find(columns, std::string("closest_approach_units")) - columns.begin();
    table.table().horizontalHeader()->setSortIndicator(static_cast<int>(miss), Qt::DescendingOrder);
    settle(table);
    brush(table);
    return save(table, pictures.filePath(QStringLiteral("run-table.png"))) && isWritten;
}
} // namespace sorvane
