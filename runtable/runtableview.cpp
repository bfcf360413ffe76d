// The table of runs on the screen, and its keys.
#include "runtableview.h"

#include <algorithm>

#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>

#include "columntext.h"

namespace sorvane {
namespace {
constexpr int kWidestColumn = 320; // pixels, until the user makes it wider
constexpr int kRoomInColumn = 10;
constexpr int kRowsMeasured = 64; // for a column's width

bool isOfTables(int key) {
    constexpr Qt::Key kKeys[] = {Qt::Key_Up,   Qt::Key_Down, Qt::Key_Left,   Qt::Key_Right,
                                 Qt::Key_Home, Qt::Key_End,  Qt::Key_PageUp, Qt::Key_PageDown};
    return std::ranges::find(kKeys, key) != std::end(kKeys);
}
} // namespace

RunTableView::RunTableView(QWidget* parent, Actions actions) : QTableView(parent), actions_(std::move(actions)) {
    setObjectName(QStringLiteral("runTableView"));
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setWordWrap(false);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setTextElideMode(Qt::ElideLeft); // only paths are too long, and their ends tell them apart
    setHorizontalScrollMode(ScrollPerPixel);
    setTabKeyNavigation(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    verticalHeader()->hide();
    QHeaderView& titles = *horizontalHeader();
    titles.setSectionsClickable(true);
    titles.setSortIndicatorShown(true);
    titles.setSectionsMovable(true);
    titles.setHighlightSections(false);
    titles.setResizeContentsPrecision(kRowsMeasured);
    titles.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&titles, &QHeaderView::customContextMenuRequested, this, [this](const QPoint& place) {
        openColumnMenu(place);
    });
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex& cell) { actions_.follow(cell.row()); });
}

void RunTableView::arrange(const std::vector<std::string>& columns) {
    std::vector<std::pair<ColumnKind, int>> order;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const ColumnKind kind = columnKind(columns[i]);
        order.emplace_back(kind, static_cast<int>(i));
        setColumnHidden(static_cast<int>(i), kind == ColumnKind::Header);
    }
    std::ranges::sort(order);
    QHeaderView& titles = *horizontalHeader();
    for (std::size_t place = 0; place < order.size(); ++place)
        titles.moveSection(titles.visualIndex(order[place].second), static_cast<int>(place));
}

void RunTableView::fitColumns() {
    for (int column = 0; column < model()->columnCount(); ++column)
        if (!isColumnHidden(column)) {
            resizeColumnToContents(column);
            setColumnWidth(column, std::min(columnWidth(column) + kRoomInColumn, kWidestColumn));
        }
}

void RunTableView::keyPressEvent(QKeyEvent* event) {
    const bool hasModifiers = (event->modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (currentIndex().isValid() && !event->isAutoRepeat())
            actions_.follow(currentIndex().row());
        return;
    case Qt::Key_Space:
        if (!event->isAutoRepeat())
            actions_.toggleGhosts();
        return;
    case Qt::Key_Escape:
        return actions_.endBrushing();
    default:
        if (isOfTables(event->key()) && !hasModifiers)
            QTableView::keyPressEvent(event);
        else
            event->ignore();
    }
}

void RunTableView::openColumnMenu(const QPoint& place) {
    QMenu menu(this);
    menu.setStyleSheet(QStringLiteral("QMenu { menu-scrollable: 1; }"));
    for (int column = 1; column < model()->columnCount(); ++column) {
        QAction* const entry =
            menu.addAction(model()->headerData(column, Qt::Horizontal, Qt::AccessibleTextRole).toString());
        entry->setCheckable(true);
        entry->setChecked(!isColumnHidden(column));
        connect(entry, &QAction::toggled, this, [this, column](bool isShown) {
            setColumnHidden(column, !isShown);
            if (isShown)
                resizeColumnToContents(column);
        });
    }
    menu.exec(horizontalHeader()->mapToGlobal(place));
}
} // namespace sorvane
