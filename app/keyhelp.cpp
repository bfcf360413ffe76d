// The list of the viewer's keys and of what the mouse does, in a window of its own.
#include "keyhelp.h"

#include <algorithm>
#include <array>

#include <QCoreApplication>
#include <QFileInfo>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QUrl>
#include <QVBoxLayout>

#include "keytable.h"
#include "preferences.h"

namespace sorvane {
namespace {
struct MouseRow {
    const char* action = "";
    const char* effect = "";
};

constexpr MouseRow kMouseRows[] = {
    {"Left drag", "turn around what the camera looks at, 0.1 degree per pixel"},
    {"Right drag", "slide the picture"},
    {"Wheel", "come closer or go away"},
    {"Double click", "start over at the body"},
    {"Click on the slider", "go to the time there"},
    {"Drop files", "load them, in the order of their names"},
};

// Where the guide is, seen from the program: installed, and in a build.
constexpr std::array<const char*, 2> kGuides = {
    "/../share/doc/sorvane/guide/index.html", "/../docs/html/guide/index.html"};

void addHeading(QGridLayout& grid, const char* section) {
    auto* const heading = new QLabel(QStringLiteral("<b>%1</b>").arg(QLatin1String(section)));
    heading->setContentsMargins(0, grid.rowCount() > 1 ? 8 : 0, 0, 0);
    grid.addWidget(heading, grid.rowCount(), 0, 1, 2);
}

void addRow(QGridLayout& grid, const QString& action, const char* effect) {
    const int at = grid.rowCount();
    auto* const left = new QLabel(action);
    auto* const right = new QLabel(QString::fromLatin1(effect));
    left->setTextFormat(Qt::PlainText);
    right->setTextFormat(Qt::PlainText);
    right->setObjectName(QStringLiteral("effect"));
    grid.addWidget(left, at, 0, Qt::AlignTop);
    grid.addWidget(right, at, 1);
}

// The widget with all rows, which the window owns.
QWidget* rows() {
    auto* const content = new QWidget;
    auto* const grid = new QGridLayout(content);
    grid->setHorizontalSpacing(24);
    grid->setVerticalSpacing(2);
    grid->setColumnStretch(1, 1);
    QLatin1String section;
    for (const KeyRow& row : keyTable()) {
        if (section != QLatin1String(row.section))
            addHeading(*grid, row.section);
        section = QLatin1String(row.section);
        addRow(*grid, keyTexts(row), row.effect);
    }
    addHeading(*grid, "Mouse");
    for (const MouseRow& row : kMouseRows)
        addRow(*grid, QString::fromLatin1(row.action), row.effect);
    return content;
}

// Null where there is no guide.
QLabel* guideLink() {
    for (const char* const place : kGuides) {
        const QFileInfo guide(QCoreApplication::applicationDirPath() + QLatin1String(place));
        if (!guide.exists())
            continue;
        auto* const link = new QLabel(QStringLiteral("<a href=\"%1\">The guide</a>")
                                          .arg(QUrl::fromLocalFile(guide.canonicalFilePath()).toString()));
        link->setOpenExternalLinks(true);
        return link;
    }
    return nullptr;
}
} // namespace

KeyHelp::KeyHelp(QWidget& window) : QDialog(&window, Qt::Tool) {
    setObjectName(QStringLiteral("keyHelp"));
    setWindowTitle(QStringLiteral("Keys"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    auto* const layout = new QVBoxLayout(this);
    auto* const list = new QScrollArea;
    list->setFrameShape(QFrame::NoFrame);
    list->setFocusPolicy(Qt::NoFocus);
    list->setWidget(rows());
    layout->addWidget(list);
    if (QLabel* const link = guideLink())
        layout->addWidget(link);
    // As large as the list, or as the screen has room for beside a window's frame; lines that are too long are broken.
    const QSize whole = list->widget()->sizeHint() + QSize(list->verticalScrollBar()->sizeHint().width(), 0);
    list->setMinimumSize(200, 100);
    const QSize around = layout->sizeHint() - list->sizeHint();
    const QSize room = window.screen()->availableSize() * 0.9;
    resize((whole + around).boundedTo(room));
    list->setWidgetResizable(true);
    for (QLabel* const effect : list->widget()->findChildren<QLabel*>(QStringLiteral("effect")))
        effect->setWordWrap(true);
    Preferences().restoreGeometry(*this);
}

KeyHelp::~KeyHelp() {
    hide();
}

void KeyHelp::hideEvent(QHideEvent* event) {
    Preferences().keepGeometry(*this);
    QDialog::hideEvent(event);
}

void KeyHelp::toggle() {
    setVisible(!isVisible());
    if (isVisible())
        raise();
}

void KeyHelp::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        hide();
    else
        QCoreApplication::sendEvent(parentWidget(), event);
}
} // namespace sorvane
