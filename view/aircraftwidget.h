// The OpenGL view of the main window: joins camera, scene and engagements to Qt's events.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <QOpenGLWidget>
#include <QString>

#include "bodylabels.h"
#include "camera.h"
#include "scaledframe.h"
#include "scene.h"
#include "terrainloading.h"
#include "viewmode.h"

class etxyz;
namespace Ui {
class new_sorvane;
}

class AircraftWidget : public QOpenGLWidget {
    Q_OBJECT

public:
    using ViewMode = ::ViewMode;

    explicit AircraftWidget(QWidget* parent = nullptr);
    ~AircraftWidget() override;

    // Starts the view: mode, camera at (100, 0, 0) looking at the origin, size from the geometry. The two numbers are
    // kept and not used; the form, not owned, is read every frame for the View menu's check marks, and a change of one
    // draws the next frame. On an unknown error emits reportError and returns false.
    bool init(float a, float b, ViewMode mode, Ui::new_sorvane* ui);

    // Stores the mode; the caller calls reset() next.
    void setViewMode(ViewMode mode);
    ViewMode viewMode() const { return camera_.mode(); }

    // The engagements to draw, in order; not owned. What is kept for one between frames goes by its id.
    void addEtxyz(etxyz* engagement, sorvane::EngagementId id = sorvane::newEngagementId());
    void clearEtxyz();
    // Draws `fresh` under this id from now on, with its field of view; time and camera stay.
    void replaceEtxyz(sorvane::EngagementId id, etxyz& fresh);
    // Draws the engagement no more; time and camera stay.
    void removeEtxyz(sorvane::EngagementId id);
    // Ends an engagement that the view draws no more, with the GL context current that its bodies were made in.
    void endEtxyz(std::unique_ptr<etxyz> engagement);

    // Places the camera anew for the current mode on the selected engagement and applies the field of view. Without a
    // selected engagement only the size is taken anew. Repaints.
    void reset();

    // Playback moved to `time` (seconds): the camera follows the selected engagement. Without one the view is repainted
    // and no more: that the time is not stored either is deliberate.
    void setKeyframe(double time);

    // Moves the camera to where all of the selected engagement is in the picture. The caller has chosen the free view.
    void showAll();
    // Turn, slide and zoom the camera as a drag with the left or the right button by so many pixels and the wheel by so
    // many notches do; not in gyro view.
    void turn(double right, double down);
    void slide(double right, double down);
    void zoom(double notches);
    // Whether all of the selected engagement lies farther away than anything is drawn.
    bool isAllBeyondSight() const;

    // Initialises the bodies of an engagement added after the first frame; before it, the first frame does.
    void initHardbodiesIfReady(etxyz& engagement);
    // Whether it can draw and has: bodies are loaded only then.
    bool hasDrawn() const { return isGlewInitialised_; }
    // Calls `use` with the GL context current, for what loads or ends bodies and terrain or draws elsewhere. The
    // projection is the widget's again afterwards.
    void withContext(const std::function<void()>& use);

    // Whether the view draws terrain only when loadTerrain has loaded it, and not as soon as it is shown. Off at start.
    void setTerrainComesLater(bool isLater) { isTerrainLater_ = isLater; }
    // Goes on for that long with loading what is shown.
    sorvane::TerrainProgress loadTerrain(std::chrono::milliseconds time);
    // Loads all that is shown, as for a picture.
    void loadAllTerrain();

    // Whether the paths differ in their line patterns too, and not only in their colours. Off at start.
    void setLineStyles(bool areOn);
    bool lineStyles() const { return lineStyles_; }

    // Whether gyro view shows only the followed engagement's reticle, and not all engagements'. Off at start.
    void setSingleReticle(bool isOn);
    bool hasSingleReticle() const { return hasSingleReticle_; }

    // Who is drawn as a ghost, null for nobody. At start there is nobody.
    void setGhosts(std::shared_ptr<const sorvane::GhostSet> ghosts);

    // Anti-aliasing: samples a pixel, 0 for none. Unless it is set, defaultSamples() of the view's context; more than
    // the context has count as the most that it has.
    void setSamples(int samples);
    int samples() const;
    // What can be chosen; nothing before the first frame.
    const std::vector<int>& sampleChoices() const { return sampleChoices_; }

    // What the picture's colours mean in radiance: at start what they always have.
    void setScale(const sorvane::PictureScale& scale);
    const sorvane::PictureScale& scale() const { return scale_; }
    // Of the frame on show.
    const sorvane::ScaleEnds& scaleEnds() const { return scaled_->ends(); }
    // What the numbers of flares mean, for their radiance. At start a unit is a metre, and a brightness of 1 is 1 W/sr.
    void setFlareUnits(const sorvane::FlareUnits& units);
    const sorvane::FlareUnits& flareUnits() const { return flareUnits_; }
    // What shows at a place of the view in logical pixels; nothing before the first frame.
    std::optional<sorvane::PointedRadiance> radianceAt(const QPointF& place);

    // The names of the bodies on show, and where they are.
    std::vector<sorvane::BodyLabel> bodyLabels(const sorvane::EngagementName& nameOf) const;

    // What the next frame would show: the engagements as they are hidden now, which of them the camera follows, and how
    // they are drawn.
    const std::vector<sorvane::SceneEngagement>& engagements();
    std::optional<sorvane::EngagementId> followed() const;
    sorvane::SceneOptions sceneOptions() const;

    const sorvane::Camera& camera() const { return camera_; }
    double currentTime() const { return currentTime_; }

    // A square of the smaller side: the view prefers to be square.
    QSize sizeHint() const override;
    int heightForWidth(int w) const override { return w; }

signals:
    // A frame has been drawn.
    void painted();
    // An engagement is drawn no more, or has other samples.
    void forgotten(sorvane::EngagementId id);
    // The user has moved it, not playback.
    void cameraMoved();
    // A frame has left terrain out that is not loaded.
    void terrainWanted();
    void reportError(const QString& message);
    void reportFatalError(const QString& message);

protected:
    void initializeGL() override;
    void resizeGL(int w, int h) override;
    void paintGL() override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void updateIf(bool hasMoved);
    void repaintOnChecks();
    bool hasCurrentContext() const;
    void takeSizeFromGeometry();
    void startDrawing();
    void forget(sorvane::EngagementId id);
    sorvane::ScaledRequest scaledRequest() const;

    float initA_ = 0.0F;
    float initB_ = 0.0F;
    int width_ = 1; // of the drawing area, logical pixels, never below 1
    int height_ = 1;
    sorvane::Camera camera_;
    double currentTime_ = 0.0; // of the frame on show, seconds
    std::vector<sorvane::SceneEngagement> engagements_;
    Ui::new_sorvane* ui_ = nullptr;
    bool lineStyles_ = false;
    bool isTerrainLater_ = false;
    sorvane::TerrainLoading terrainLoading_;
    bool hasSingleReticle_ = false;
    std::shared_ptr<const sorvane::GhostSet> ghosts_;
    std::optional<int> askedSamples_;
    int defaultSamples_ = 0;
    std::vector<int> sampleChoices_;
    bool isSuspended_ = false; // while set, a frame is cleared and nothing drawn; nothing sets it
    bool isGlewInitialised_ = false;
    sorvane::PictureScale scale_;
    sorvane::FlareUnits flareUnits_;
    std::unique_ptr<sorvane::ScaledFrame> scaled_ = std::make_unique<sorvane::ScaledFrame>(); // ended like the scene
    std::unique_ptr<sorvane::Scene> scene_; // made with the GL context current and ended so
};
