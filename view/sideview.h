// A further window onto what the main view shows, with a camera of its own.
#pragma once

#include <memory>
#include <optional>

#include <QImage>
#include <QPointer>
#include <QWidget>

#include "camera.h"
#include "picturescale.h"
#include "scaledframe.h"
#include "scene.h"

class AircraftWidget;
class QOpenGLFramebufferObject;

namespace sorvane {
// What is a view's own: everything else it shares with the others.
struct ViewState {
    Camera camera{};
    bool isOverview = false; // a free view that starts with all of the followed engagement in the picture
    // Unless it is chosen the seeker's view has an automatic scale, as a seeker levels what it sees, and the others
    // have none.
    std::optional<PictureScale> chosenScale{};

    PictureScale scale() const;
};

// Shows the main view's engagements at its time with its options, and follows the engagement that it follows. Paints
// when the main view does, and draws in its context, in which the bodies are; black before the main view's first frame.
// Contexts of their own that share bodies would have these end while shaders of theirs are in use in another context,
// after which Mesa 22.3 draws with none and crashes.
class SideView : public QWidget {
    Q_OBJECT

public:
    // A window, whatever its parent.
    SideView(AircraftWidget& main, QWidget* parent);
    ~SideView() override;

    // Chooses a view and puts the camera where it starts: that of the free one stays where it is.
    void choose(ViewMode mode);
    // The free view that has all of the followed engagement in the picture.
    void chooseOverview();
    ViewMode viewMode() const { return state_.camera.mode(); }
    bool isOverview() const { return state_.isOverview; }
    const Camera& camera() const { return state_.camera; }

    // What its colours mean in radiance, whatever those of the main view mean.
    void setScale(const PictureScale& scale);
    PictureScale scale() const { return state_.scale(); }
    const ScaleEnds& scaleEnds() const { return scaled_->ends(); }

    // As it would be shown now, in Format_RGB32 and pixels of the screen; null before the main view's first frame.
    QImage picture();

    // As AircraftWidget's.
    void turn(double right, double down);
    void slide(double right, double down);
    void zoom(double notches);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void updateIf(bool hasMoved);
    void startOver();
    QImage draw(QSize pixels);
    // The main view's time or followed engagement may be others than in the last frame.
    void follow(const SceneEngagement& followed, double time);
    void forget(EngagementId id);

    QPointer<AircraftWidget> main_;
    ViewState state_;
    bool isPlaced_ = false; // the camera, since it was last to start over
    std::optional<EngagementId> followed_;
    double time_ = 0.0; // of the frame on show, seconds
    // Used and ended with the main view's GL context current.
    std::unique_ptr<ScaledFrame> scaled_ = std::make_unique<ScaledFrame>();
    std::unique_ptr<Scene> scene_ = std::make_unique<Scene>();
    std::unique_ptr<QOpenGLFramebufferObject> framebuffer_;
};
} // namespace sorvane
