// The list of the viewer's keys in a window of its own.
#include "keyhelp.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>

#include "keytable.h"

namespace sorvane {
namespace {
void addHeading(QGridLayout& grid, const char* section) {
    auto* const heading = new QLabel(QStringLiteral("<b>%1</b>").arg(QLatin1String(section)));
    heading->setContentsMargins(0, grid.rowCount() > 1 ? 8 : 0, 0, 0);
    grid.addWidget(heading, grid.rowCount(), 0, 1, 2);
}

void addRow(QGridLayout& grid, const KeyRow& row) {
    const int at = grid.rowCount();
    auto* const keys = new QLabel(keyTexts(row));
    auto* const effect = new QLabel(QString::fromLatin1(row.effect));
    keys->setTextFormat(Qt::PlainText);
    effect->setTextFormat(Qt::PlainText);
    grid.addWidget(keys, at, 0);
    grid.addWidget(effect, at, 1);
}
} // namespace

KeyHelp::KeyHelp(QWidget& window) : QDialog(&window) {
    setObjectName(QStringLiteral("keyHelp"));
    setWindowTitle(QStringLiteral("Keys"));
    auto* const grid = new QGridLayout(this);
    grid->setHorizontalSpacing(24);
    grid->setVerticalSpacing(2);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    QLatin1String section;
    for (const KeyRow& row : keyTable()) {
        if (section != QLatin1String(row.section))
            addHeading(*grid, row.section);
        section = QLatin1String(row.section);
        addRow(*grid, row);
    }
}

void KeyHelp::toggle() {
    setVisible(!isVisible());
    if (isVisible()) {
        raise();
        activateWindow();
    }
}

void KeyHelp::keyPressEvent(QKeyEvent* event) {
    const KeyRow* const row = keyRowOf(event->keyCombination());
    const bool isOwn = row != nullptr && row->command == KeyCommand::ShowKeys;
    if (isOwn && !event->isAutoRepeat())
        toggle();
    else if (!isOwn)
        QDialog::keyPressEvent(event);
}
} // namespace sorvane
