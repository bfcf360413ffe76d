// Further view windows: which there are, what their keys do, when they end.
#include "sideviews.h"

#include <algorithm>
#include <optional>

#include <QDoubleSpinBox>
#include <QEvent>
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

// Beside the viewer, one under the other, as far as the screen goes.
void SideViews::place(SideView& fresh) const {
    const QRect viewer = parts_.window.frameGeometry();
    const QRect screen = parts_.window.screen()->availableGeometry();
    QRect place({viewer.right() + 1, viewer.top() + static_cast<int>(views_.size()) * kSize.height()}, kSize);
    place.moveRight(std::min(place.right(), screen.right()));
    place.moveBottom(std::min(place.bottom(), screen.bottom()));
    fresh.setGeometry(place);
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
