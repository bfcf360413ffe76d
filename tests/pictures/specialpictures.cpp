// The reference pictures that no options of the command make.
#include "specialpictures.h"

#include "bodies.h"
#include "datatree.h"
#include "glapi.h"
#include "offscreencontext.h"
#include "projection.h"
#include "scene.h"

namespace sorvane {
namespace {
constexpr int kWidth = 240;
constexpr int kHeight = 180;

Camera cameraAt(const Vector<float>& eye, const Vector<float>& centre) {
    Camera camera;
    camera.setMode(ViewFree);
    camera.place(eye, centre);
    return camera;
}

// A context ready to draw a frame into.
struct Frame : OffscreenContext {
    Frame() : OffscreenContext(kWidth, kHeight) {
        setUpScene();
        applyProjection(kDefaultFieldOfViewDegrees, kWidth, kHeight);
    }
};
} // namespace

QImage hiddenEngagementPicture(const std::filesystem::path& demonstration) {
    const Frame frame;
    etxyz turn;
    etxyz weave;
    turn.LoadETXYZ(QString::fromStdString((demonstration / "ETXYZ.OUT.turn").string()));
    weave.LoadETXYZ(QString::fromStdString((demonstration / "ETXYZ.OUT.weave.Z").string()));
    turn.InitHardbodies();
    weave.InitHardbodies();
    Scene scene;
    scene.draw(
        {{EngagementId{1}, &turn}, {EngagementId{2}, &weave, true}},
        cameraAt({-500.0F, -2500.0F, -2500.0F, 1.0F}, {4000.0F, -2500.0F, -900.0F, 1.0F}), {.time = 6.0});
    return frame.picture();
}

QImage rotorPicture(const std::filesystem::path& demonstration) {
    const Frame frame;
    const auto file = [&](const char* name) {
        return (demonstration / "data" / name).string();
    };
    AtmFile atmosphere;
    atmosphere.Load(file(kHelicopterAtmosphere));
    Hardbody helicopter;
    helicopter.Init(
        file(kHelicopterReflectance), file(kHelicopterGeometry), file(kHelicopterSignature), file("openglshaders/"),
        file(kHelicopterRotors), true, true, false, true, true, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 3000.0F,
        atmosphere.diffuseEarthRadiance(), atmosphere.diffuseSkyRadiance(), atmosphere.directSolarRadiance());
    const LookAt lookAt(cameraAt({22.0F, -14.0F, -122.0F, 1.0F}, {0.0F, 0.0F, -101.0F, 1.0F}));
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    const float position[3] = {0.0F, 0.0F, -100.0F};
    const float level[3] = {};
    FrameDepth().draw([&](const DepthSlice&) {
        drawBody(helicopter, {position, level}, lookAt, sunDirectionInEye(atmosphere, lookAt.rotation().data()), 0.02);
    });
    return frame.picture();
}
} // namespace sorvane
