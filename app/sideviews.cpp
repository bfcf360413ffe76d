// Further view windows: which there are, what their keys do, when they end.
#include "sideviews.h"

#include <algorithm>
#include <optional>

#include <QDoubleSpinBox>
#include <QEvent>
#include <QRect>
#include <QScreen>

#include "aircraftwidget.h"
#include "camerakeys.h"
#include "currentengagement.h"
#include "scalekeys.h"
#include "viewnotice.h"

namespace sorvane {
namespace {
constexpr std::size_t kMost = 4;
constexpr QSize kSize(480, 360); // of a new window

// The upper left corner of the place on the screen, among columns on both sides of the viewer and in front of it, that
// hides least of the windows; of equal ones the first.
QPoint roomFor(const QSize& size, const QRect& screen, const QRect& viewer, const std::vector<QRect>& windows) {
    std::optional<qint64> least;
    QPoint best = screen.topLeft();
    const int rightmost = std::max(screen.right() - size.width() + 1, screen.left());
    for (const int left : {viewer.right() + 1, viewer.left() - size.width(), viewer.left(), rightmost})
        for (int top = screen.top(); top + size.height() <= screen.bottom() + 1; top += size.height()) {
            const QPoint corner(std::clamp(left, screen.left(), rightmost), top);
            qint64 hidden = 0;
            for (const QRect& window : windows) {
                const QRect part = window & QRect(corner, size);
                hidden += part.isEmpty() ? 0 : qint64{part.width()} * part.height();
            }
            if (!least || hidden < *least) {
                least = hidden;
                best = corner;
            }
        }
    return best;
}

// The view that a key chooses.
std::optional<ViewMode> modeOf(KeyCommand command) {
    switch (command) {
    case KeyCommand::ViewThreat:
        return ViewThreat;
    case KeyCommand::ViewGyro:
        return ViewGyro;
    case KeyCommand::ViewTarget:
        return ViewTarget;
    case KeyCommand::ViewFree:
        return ViewFree;
    default:
        return std::nullopt;
    }
}
} // namespace

SideViews::SideViews(const Parts& parts) : parts_(parts) {
    parts_.window.installEventFilter(this);
    // A main view that isn't on the screen paints nothing that they could go by.
    connect(&parts_.box, &QDoubleSpinBox::valueChanged, this, [this] {
        if (parts_.window.isMinimized())
            for (SideView* const view : views())
                view->update();
    });
}

SideViews::~SideViews() {
    for (SideView* const view : views())
        delete view;
}

std::vector<SideView*> SideViews::views() const {
    std::vector<SideView*> open;
    for (const QPointer<SideView>& view : views_)
        if (view != nullptr)
            open.push_back(view);
    return open;
}

void SideViews::open() {
    std::erase(views_, nullptr);
    if (views_.size() >= kMost)
        return parts_.notice.notify(QStringLiteral("Four further views are open: close one of them first"));
    auto* const view = new SideView(parts_.view, &parts_.window);
    view->setAttribute(Qt::WA_DeleteOnClose);
    view->setObjectName(QStringLiteral("sideView"));
    chooseUnseen(*view);
    place(*view);
    name(*view);
    views_.emplace_back(view);
    new KeyFilter(*view, [this, view](KeyCommand command) { run(*view, command); });
    view->show();
}

void SideViews::chooseUnseen(SideView& fresh) const {
    const std::vector<SideView*> others = views();
    const ViewMode main = parts_.view.viewMode();
    for (const ViewMode mode : {ViewGyro, ViewTarget, ViewThreat})
        if (mode != main && std::ranges::find(others, mode, &SideView::viewMode) == others.end())
            return fresh.choose(mode);
    if (std::ranges::none_of(others, &SideView::isOverview))
        return fresh.chooseOverview();
    fresh.choose(main);
}

// Beside the viewer, to its right first, wherever it hides least of the other windows.
void SideViews::place(SideView& fresh) const {
    const QRect viewer = parts_.window.frameGeometry();
    std::vector<QRect> others = {viewer};
    for (const SideView* const view : views())
        others.push_back(view->frameGeometry());
    // Its frame will be as wide as the viewer's.
    const QPoint corner = parts_.window.geometry().topLeft() - viewer.topLeft();
    const QSize size = kSize + viewer.size() - parts_.window.size();
    const QPoint place = roomFor(size, parts_.window.screen()->availableGeometry(), viewer, others);
    fresh.setGeometry({place + corner, kSize});
}

void SideViews::run(SideView& view, KeyCommand command) {
    if (const std::optional<ViewMode> mode = modeOf(command))
        view.choose(*mode);
    else if (command == KeyCommand::Overview)
        view.chooseOverview();
    else if (command == KeyCommand::ToggleFullScreen)
        view.setWindowState(view.windowState() ^ Qt::WindowFullScreen);
    else if (const std::optional<PictureScale> scale = scaleAfter(command, view.scale(), view.scaleEnds()))
        view.setScale(*scale);
    else if (!moveByKey(view, command))
        return parts_.runKey(command);
    name(view);
}

void SideViews::name(SideView& view) const {
    const LoadedEngagement* const current = parts_.current.get();
    const QString shown =
        view.isOverview() ? QStringLiteral("Overview") : QString::fromLatin1(nameOf(view.viewMode()).shown);
    view.setWindowTitle(current == nullptr ? shown : QStringLiteral("%1: %2").arg(shown, current->name()));
}

void SideViews::refresh() {
    for (SideView* const view : views())
        name(*view);
}

void SideViews::closeAll() {
    for (SideView* const view : views())
        view->close();
}

bool SideViews::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &parts_.window && event->type() == QEvent::Close)
        closeAll();
    return QObject::eventFilter(watched, event);
}
} // namespace sorvane
