// One loaded engagement: the initialisation of its bodies and its terrain.
#include "etxyz.h"

#include <QFile>

#include "dataroot.h"
#include "engagementfiles.h"

using namespace sorvane;

namespace {
constexpr float kRange = 3000.0F; // makes visible greys of radiances in W/cm²/sr

std::string pathBytes(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

// A body that can't be loaded has printed why and stays unusable: the engagement then plays without it.
void initBody(
    Hardbody& body, const QString& brdfPath, const QString& geometryPath, const QString& radiancePath,
    const AtmFile& atmosphere) {
    constexpr bool kDoBrdf = true;
    constexpr bool kAntialias = true;
    constexpr bool kMultiFacet = true;
    constexpr bool kRotors = false;
    constexpr bool kPerFrameUpload = false;
    const std::string noRotors;
    body.Init(
        pathBytes(brdfPath), pathBytes(geometryPath), pathBytes(radiancePath), dataPath("openglshaders/"), noRotors,
        kDoBrdf, kAntialias, kMultiFacet, kRotors, kPerFrameUpload, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F, kRange,
        atmosphere.diffuseEarthRadiance(), atmosphere.diffuseSkyRadiance(), atmosphere.directSolarRadiance());
}

// A terrain without tiles has said so and draws nothing.
void initTerrain(Terrain& terrain, const QString& topographyPath, const QString& radiancePath) {
    float lowest = 0.0F; // not used
    terrain.Init(
        pathBytes(topographyPath), pathBytes(radiancePath), dataPath("openglshaders/"), lowest, kRange, 1.0F, 1.0F,
        1.0F, 0.0F, 0.0F, 0.0F);
}
} // namespace

void etxyz::InitHardbodies() {
    if (atm != nullptr && target != nullptr)
        initBody(
            *target, targetBrdfPath, sorvane::geometryPath(targetGeometryBase),
            sorvane::radiancePath(targetSignatureBase), *atm);
    if (atm != nullptr && threat != nullptr)
        initBody(
            *threat, sorvane::reflectancePath(threatSignatureBase), sorvane::geometryPath(threatModelBase),
            sorvane::radiancePath(threatSignatureBase), *atm);
    if (atm != nullptr && terrain != nullptr)
        initTerrain(*terrain, terrainTopoPath, terrainRadPath);
    hardbodiesInitialized = true;
}
