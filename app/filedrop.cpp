// Loads files that are dropped onto the window.
#include "filedrop.h"

#include <algorithm>
#include <utility>

#include <QDropEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

namespace sorvane {
namespace {
QStringList localFiles(const QMimeData& data) {
    QStringList paths;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile())
            paths << url.toLocalFile();
    std::ranges::sort(paths, {}, [](const QString& path) { return std::pair(QFileInfo(path).fileName(), path); });
    return paths;
}
} // namespace

FileDrop::FileDrop(QWidget& window, Load load) : QObject(&window), load_(std::move(load)), turn_(new QTimer(this)) {
    connect(turn_, &QTimer::timeout, this, [this] { loadWaiting(); });
    turn_->setSingleShot(true);
    window.setAcceptDrops(true);
    window.installEventFilter(this);
}

FileDrop::~FileDrop() {
    if (!waiting_.isEmpty())
        QGuiApplication::restoreOverrideCursor();
}

bool FileDrop::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop)
        return QObject::eventFilter(watched, event);
    auto& drag = static_cast<QDropEvent&>(*event);
    if (localFiles(*drag.mimeData()).isEmpty() || !drag.possibleActions().testFlag(Qt::CopyAction))
        return QObject::eventFilter(watched, event);
    // Whatever else is proposed: the files stay where they are.
    drag.setDropAction(Qt::CopyAction);
    drag.accept();
    if (type == QEvent::Drop)
        enqueue(*drag.mimeData());
    return true;
}

void FileDrop::enqueue(const QMimeData& files) {
    if (waiting_.isEmpty())
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    waiting_ << localFiles(files);
    turn_->start(0);
}

void FileDrop::loadWaiting() {
    load_(std::exchange(waiting_, {}));
    QGuiApplication::restoreOverrideCursor();
}
} // namespace sorvane
