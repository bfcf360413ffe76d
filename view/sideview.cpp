// A further window onto what the main view shows, with a camera of its own.
#include "sideview.h"

#include <algorithm>

#include <QMouseEvent>
#include <QOpenGLFramebufferObject>
#include <QPainter>
#include <QWheelEvent>

#include "aircraftwidget.h"
#include "cameramoves.h"
#include "camerasubject.h"
#include "framegrab.h"
#include "overview.h"
#include "projection.h"

namespace sorvane {
PictureScale ViewState::scale() const {
    if (chosenScale)
        return *chosenScale;
    return camera.mode() == ViewGyro ? PictureScale{.range = PictureScale::Range::Automatic, .hasColourBar = true}
                                     : PictureScale();
}

SideView::SideView(AircraftWidget& main, QWidget* parent) : QWidget(parent, Qt::Window), main_(&main) {
    setMinimumSize(50, 50);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&main, &AircraftWidget::painted, this, qOverload<>(&QWidget::update));
    connect(&main, &AircraftWidget::forgotten, this, &SideView::forget);
}

SideView::~SideView() {
    if (main_ != nullptr)
        main_->withContext([this] {
            framebuffer_.reset();
            scaled_.reset();
            scene_.reset();
        });
}

void SideView::choose(ViewMode mode) {
    state_.camera.setMode(mode);
    state_.isOverview = false;
    startOver();
}

void SideView::chooseOverview() {
    state_.camera.setMode(ViewFree);
    state_.isOverview = true;
    startOver();
}

void SideView::startOver() {
    isPlaced_ = false;
    update();
}

void SideView::setScale(const PictureScale& scale) {
    state_.chosenScale = scale;
    update();
}

void SideView::turn(double right, double down) {
    updateIf(turnCamera(state_.camera, right, down));
}

void SideView::slide(double right, double down) {
    updateIf(slideCamera(state_.camera, right, down));
}

void SideView::zoom(double notches) {
    updateIf(zoomCamera(state_.camera, notches));
}

void SideView::updateIf(bool hasMoved) {
    if (hasMoved)
        update();
}

void SideView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QImage shown = picture();
    if (shown.isNull())
        painter.fillRect(rect(), Qt::black);
    else
        painter.drawImage(rect(), shown);
}

QImage SideView::picture() {
    QImage drawn;
    const QSize pixels = (QSizeF(size()) * devicePixelRatio()).toSize().expandedTo({1, 1});
    if (main_ != nullptr && main_->hasDrawn())
        main_->withContext([&] { drawn = draw(pixels); });
    return drawn;
}

QImage SideView::draw(QSize pixels) {
    if (framebuffer_ == nullptr || framebuffer_->size() != pixels)
        framebuffer_ =
            std::make_unique<QOpenGLFramebufferObject>(pixels, QOpenGLFramebufferObject::CombinedDepthStencil);
    if (!framebuffer_->bind())
        return {};
    const std::vector<SceneEngagement>& engagements = main_->engagements();
    SceneOptions options = main_->sceneOptions();
    options.pixelRatio = devicePixelRatio();
    const auto found = std::ranges::find(
        engagements, main_->followed(), [](const SceneEngagement& shown) { return std::optional(shown.id); });
    double fieldOfView = kDefaultFieldOfViewDegrees;
    if (found != engagements.end()) {
        follow(*found, options.time);
        if (viewMode() == ViewGyro)
            fieldOfView = double{found->engagement->fieldOfView};
    }
    applyProjection(fieldOfView, pixels.width(), pixels.height());
    scaled_->paint(
        *scene_, engagements, state_.camera, options,
        {.scale = state_.scale(),
         .fieldOfViewDegrees = fieldOfView,
         .width = pixels.width(),
         .height = pixels.height(),
         .followed = main_->followed(),
         .flareUnits = main_->flareUnits()});
    QImage drawn = framebuffer_->toImage();
    framebuffer_->release();
    dropAlpha(drawn);
    return drawn;
}

void SideView::follow(const SceneEngagement& followed, double time) {
    const CameraSubject now = subjectAt(*followed.engagement, time);
    if (isPlaced_ && followed_ == followed.id) {
        state_.camera.follow(subjectAt(*followed.engagement, time_), now);
    } else if (state_.isOverview) {
        const Viewpoint over = overviewOf(*followed.engagement, kDefaultFieldOfViewDegrees, width(), height());
        state_.camera.place(over.eye, over.centre);
    } else {
        state_.camera.reset(now);
        state_.camera.follow(now, now); // places the seeker's
    }
    isPlaced_ = true;
    followed_ = followed.id;
    time_ = time;
}

void SideView::forget(EngagementId id) {
    main_->withContext([&] { scene_->forget(id); });
    update();
}

void SideView::mousePressEvent(QMouseEvent* event) {
    pressCamera(state_.camera, *event);
}

void SideView::mouseMoveEvent(QMouseEvent* event) {
    updateIf(dragCamera(state_.camera, *event));
}

void SideView::mouseDoubleClickEvent(QMouseEvent* event) {
    startOver();
    pressCamera(state_.camera, *event);
}

void SideView::wheelEvent(QWheelEvent* event) {
    updateIf(zoomCamera(state_.camera, *event));
}
} // namespace sorvane
