// The OpenGL view of the main window: joins camera, scene and engagements to Qt's events.
#include "aircraftwidget.h"

#include <algorithm>
#include <cmath>

#include <QMouseEvent>
#include <QOpenGLContext>
#include <QWheelEvent>

#include "cameramoves.h"
#include "camerasubject.h"
#include "etxyz.h"
#include "glentrypoints.h"
#include "overview.h"
#include "projection.h"
#include "selection.h"
#include "ui_new_sorvane.h"

using namespace sorvane;

namespace {
void takeHidden(std::vector<SceneEngagement>& engagements) {
    for (SceneEngagement& shown : engagements)
        shown.isHidden = isEngagementHidden(*shown.engagement);
}

// Runs an event handler's work. Nothing that it throws leaves the handler: the text is formed and discarded, on
// purpose, and the event simply dropped.
template <class Work> void guarded(const Work& work) {
    try {
        work();
    } catch (...) {
        [[maybe_unused]] const QString discarded =
            QStringLiteral("VkPlacementTool callback:  encountered an unknown error.");
    }
}
} // namespace

AircraftWidget::AircraftWidget(QWidget* parent) : QOpenGLWidget(parent) {
    setMinimumSize(50, 50);
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setFocusPolicy(Qt::StrongFocus);
}

AircraftWidget::~AircraftWidget() {
    makeCurrent();
    scaled_.reset();
    scene_.reset();
    doneCurrent();
}

bool AircraftWidget::init(float a, float b, ViewMode mode, Ui::new_sorvane* ui) {
    try {
        initA_ = a;
        initB_ = b;
        camera_.setMode(mode);
        camera_.resetToOrigin();
        takeSizeFromGeometry();
        initializeGL();
        isGlewInitialised_ = false;
        resizeGL(width_, height_);
        isSuspended_ = false;
        ui_ = ui;
        repaintOnChecks();
        return true;
    } catch (...) {
        emit reportError(QStringLiteral("aircraftWidget.init:  encountered an unknown error."));
        return false;
    }
}

void AircraftWidget::repaintOnChecks() {
    if (ui_ == nullptr)
        return;
    for (const QAction* const shown :
         {ui_->actionShow_Terrain, ui_->actionShow_History_Lines, ui_->actionShow_Drop_Lines, ui_->actionShow_Grid})
        connect(shown, &QAction::toggled, this, qOverload<>(&QWidget::update), Qt::UniqueConnection);
}

void AircraftWidget::setViewMode(ViewMode mode) {
    camera_.setMode(mode);
}

void AircraftWidget::addEtxyz(etxyz* engagement, EngagementId id) {
    engagements_.push_back({id, engagement});
}

void AircraftWidget::clearEtxyz() {
    while (!engagements_.empty())
        removeEtxyz(engagements_.back().id);
}

void AircraftWidget::replaceEtxyz(EngagementId id, etxyz& fresh) {
    const auto shown = std::ranges::find(engagements_, id, &SceneEngagement::id);
    if (shown == engagements_.end())
        return;
    shown->engagement = &fresh;
    forget(id);
}

void AircraftWidget::removeEtxyz(EngagementId id) {
    if (std::erase_if(engagements_, [id](const SceneEngagement& shown) { return shown.id == id; }) > 0)
        forget(id);
}

void AircraftWidget::forget(EngagementId id) {
    emit forgotten(id);
    makeCurrent();
    if (scene_ != nullptr)
        scene_->forget(id);
    resizeGL(width_, height_); // the field of view may be another one
    doneCurrent();
    update();
}

void AircraftWidget::endEtxyz(std::unique_ptr<etxyz> engagement) {
    withContext([&engagement] { engagement.reset(); });
}

void AircraftWidget::withContext(const std::function<void()>& use) {
    makeCurrent();
    use();
    resizeGL(width_, height_);
    doneCurrent();
}

void AircraftWidget::reset() {
    takeSizeFromGeometry();
    update();
    const etxyz* const selected = selectedEngagement(engagements_);
    if (selected == nullptr)
        return;
    camera_.reset(subjectAt(*selected, currentTime_));
    makeCurrent();
    resizeGL(width_, height_);
    doneCurrent();
}

void AircraftWidget::setKeyframe(double time) {
    update();
    const etxyz* const selected = selectedEngagement(engagements_);
    if (selected == nullptr)
        return;
    camera_.follow(subjectAt(*selected, currentTime_), subjectAt(*selected, time));
    currentTime_ = time;
}

void AircraftWidget::initHardbodiesIfReady(etxyz& engagement) {
    if (!isGlewInitialised_)
        return;
    withContext([&engagement] { engagement.InitHardbodies(); });
}

void AircraftWidget::setLineStyles(bool areOn) {
    lineStyles_ = areOn;
    update();
}

void AircraftWidget::setSingleReticle(bool isOn) {
    hasSingleReticle_ = isOn;
    update();
}

void AircraftWidget::setGhosts(std::shared_ptr<const GhostSet> ghosts) {
    if (ghosts == ghosts_)
        return;
    ghosts_ = std::move(ghosts);
    update();
}

void AircraftWidget::setSamples(int samples) {
    askedSamples_ = samples;
    update();
}

void AircraftWidget::setScale(const PictureScale& scale) {
    scale_ = scale;
    update();
}

void AircraftWidget::setFlareUnits(const FlareUnits& units) {
    flareUnits_ = units;
    update();
}

ScaledRequest AircraftWidget::scaledRequest() const {
    const double ratio = devicePixelRatio();
    return {
        .scale = scale_,
        .fieldOfViewDegrees = fieldOfViewDegrees(engagements_),
        .width = std::max(static_cast<int>(std::lround(width_ * ratio)), 1),
        .height = std::max(static_cast<int>(std::lround(height_ * ratio)), 1),
        .followed = followed(),
        .flareUnits = flareUnits_};
}

std::optional<PointedRadiance> AircraftWidget::radianceAt(const QPointF& place) {
    if (!isGlewInitialised_ || scene_ == nullptr)
        return std::nullopt;
    std::optional<PointedRadiance> pointed;
    const QPointF pixel = place * devicePixelRatio();
    takeHidden(engagements_);
    withContext([&] {
        pointed = scaled_->at(
            static_cast<int>(std::floor(pixel.x())), static_cast<int>(std::floor(pixel.y())), engagements_, camera_,
            sceneOptions(), scaledRequest());
    });
    return pointed;
}

int AircraftWidget::samples() const {
    const int wanted = askedSamples_.value_or(defaultSamples_);
    return sampleChoices_.empty() ? wanted : std::min(wanted, sampleChoices_.back());
}

std::vector<BodyLabel> AircraftWidget::bodyLabels(const EngagementName& nameOf) const {
    std::vector<SceneEngagement> shown = engagements_;
    takeHidden(shown);
    return sorvane::bodyLabels(
        shown,
        {.camera = camera_,
         .time = currentTime_,
         .fieldOfViewDegrees = fieldOfViewDegrees(engagements_),
         .size = QSizeF(width_, height_)},
        nameOf);
}

QSize AircraftWidget::sizeHint() const {
    const int side = std::min(width(), height());
    return {side, side};
}

void AircraftWidget::initializeGL() {
    // Called by init before the widget has a context, and again by Qt when it has one.
    if (!hasCurrentContext())
        return;
    setUpScene();
    if (scene_ == nullptr)
        scene_ = std::make_unique<Scene>();
}

void AircraftWidget::resizeGL(int w, int h) {
    width_ = std::max(w, 1);
    height_ = std::max(h, 1);
    if (hasCurrentContext())
        applyProjection(fieldOfViewDegrees(engagements_), width_, height_, devicePixelRatio());
}

void AircraftWidget::paintGL() {
    if (!isGlewInitialised_)
        startDrawing();
    if (isSuspended_ || !isValid() || scene_ == nullptr)
        return clearFrame();
    takeHidden(engagements_);
    const SceneOptions options = sceneOptions();
    scaled_->paint(*scene_, engagements_, camera_, options, scaledRequest());
    const auto isLoaded = [](const Terrain* terrain) {
        return terrain->isLoaded();
    };
    if (!options.loadsTerrain && !std::ranges::all_of(Scene::shownTerrains(engagements_, options), isLoaded))
        emit terrainWanted();
    emit painted();
}

TerrainProgress AircraftWidget::loadTerrain(std::chrono::milliseconds time) {
    if (!isGlewInitialised_)
        return {};
    const auto until = std::chrono::steady_clock::now() + time;
    TerrainProgress progress;
    takeHidden(engagements_);
    withContext([&] { progress = terrainLoading_.goOn(Scene::shownTerrains(engagements_, sceneOptions()), until); });
    return progress;
}

void AircraftWidget::loadAllTerrain() {
    if (!isGlewInitialised_)
        return;
    takeHidden(engagements_);
    withContext([&] {
        for (Terrain* const terrain : Scene::shownTerrains(engagements_, sceneOptions()))
            terrain->loadAll();
    });
}

void AircraftWidget::startDrawing() {
    if (!loadGlEntryPoints()) {
        qWarning("glewInit failed");
        return;
    }
    isGlewInitialised_ = true;
    sampleChoices_ = sorvane::sampleChoices();
    defaultSamples_ = defaultSamples();
    for (const SceneEngagement& shown : engagements_)
        if (!shown.engagement->areHardbodiesInitialized())
            shown.engagement->InitHardbodies();
}

void AircraftWidget::resizeEvent(QResizeEvent* event) {
    takeSizeFromGeometry();
    makeCurrent();
    resizeGL(width_, height_);
    doneCurrent();
    QOpenGLWidget::resizeEvent(event);
}

void AircraftWidget::mousePressEvent(QMouseEvent* event) {
    guarded([&] { pressCamera(camera_, *event); });
}

void AircraftWidget::mouseMoveEvent(QMouseEvent* event) {
    guarded([&] { updateIf(dragCamera(camera_, *event)); });
}

void AircraftWidget::mouseDoubleClickEvent(QMouseEvent* event) {
    guarded([&] {
        // A drag may go on from here.
        reset();
        pressCamera(camera_, *event);
    });
}

void AircraftWidget::wheelEvent(QWheelEvent* event) {
    guarded([&] { updateIf(zoomCamera(camera_, *event)); });
}

void AircraftWidget::updateIf(bool hasMoved) {
    if (!hasMoved)
        return;
    update();
    emit cameraMoved();
}

void AircraftWidget::turn(double right, double down) {
    updateIf(turnCamera(camera_, right, down));
}

void AircraftWidget::slide(double right, double down) {
    updateIf(slideCamera(camera_, right, down));
}

void AircraftWidget::zoom(double notches) {
    updateIf(zoomCamera(camera_, notches));
}

void AircraftWidget::showAll() {
    const etxyz* const selected = selectedEngagement(engagements_);
    if (selected == nullptr || viewMode() == ViewGyro)
        return;
    const Viewpoint over = overviewOf(*selected, fieldOfViewDegrees(engagements_), width_, height_);
    camera_.place(over.eye, over.centre);
    updateIf(true);
}

bool AircraftWidget::isAllBeyondSight() const {
    const etxyz* const selected = selectedEngagement(engagements_);
    return selected != nullptr && isBeyondSight(*selected, camera_);
}

bool AircraftWidget::hasCurrentContext() const {
    return context() != nullptr && QOpenGLContext::currentContext() == context();
}

void AircraftWidget::takeSizeFromGeometry() {
    width_ = std::max(geometry().width(), 1);
    height_ = std::max(geometry().height(), 1);
}

const std::vector<SceneEngagement>& AircraftWidget::engagements() {
    takeHidden(engagements_);
    return engagements_;
}

std::optional<EngagementId> AircraftWidget::followed() const {
    const auto found = std::ranges::find(engagements_, selectedEngagement(engagements_), &SceneEngagement::engagement);
    return found == engagements_.end() ? std::nullopt : std::optional(found->id);
}

SceneOptions AircraftWidget::sceneOptions() const {
    SceneOptions options;
    options.time = currentTime_;
    options.lineStyles = lineStyles_;
    options.loadsTerrain = !isTerrainLater_;
    options.samples = samples();
    options.ghosts = ghosts_;
    if (hasSingleReticle_)
        options.reticleOf = followed();
    options.pixelRatio = devicePixelRatio();
    if (ui_ != nullptr) {
        options.showTerrain = ui_->actionShow_Terrain->isChecked();
        options.showHistoryLines = ui_->actionShow_History_Lines->isChecked();
        options.showDropLines = ui_->actionShow_Drop_Lines->isChecked();
        options.showGrid = ui_->actionShow_Grid->isChecked();
    }
    return options;
}
