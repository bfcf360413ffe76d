// One loaded engagement: the initialisation of its bodies and its terrain.
#include "etxyz.h"

#include <QFile>

#include "dataroot.h"
#include "engagementfiles.h"
#include "radiancegrey.h"

using namespace sorvane;

namespace {
std::string pathBytes(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

bool initBody(
    Hardbody& body, const QString& brdfPath, const QString& geometryPath, const QString& radiancePath,
    const AtmFile& atmosphere) {
    constexpr bool kDoBrdf = true;
    constexpr bool kAntialias = true;
    constexpr bool kMultiFacet = true;
    constexpr bool kRotors = false;
    constexpr bool kPerFrameUpload = false;
    const std::string noRotors;
    return body.Init(
        pathBytes(brdfPath), pathBytes(geometryPath), pathBytes(radiancePath), dataPath("openglshaders/"), noRotors,
        kDoBrdf, kAntialias, kMultiFacet, kRotors, kPerFrameUpload, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F,
        kGreysPerRadiance, atmosphere.diffuseEarthRadiance(), atmosphere.diffuseSkyRadiance(),
        atmosphere.directSolarRadiance());
}

bool initTiles(Terrain& terrain, const QString& topographyPath, const QString& radiancePath) {
    float lowest = 0.0F; // not used
    return terrain.Init(
        pathBytes(topographyPath), pathBytes(radiancePath), dataPath("openglshaders/"), lowest, kGreysPerRadiance, 1.0F,
        1.0F, 1.0F, 0.0F, 0.0F, 0.0F);
}
} // namespace

bool etxyz::initTarget() {
    return atm != nullptr && target != nullptr &&
           initBody(
               *target, targetBrdfPath, sorvane::geometryPath(targetGeometryBase),
               sorvane::radiancePath(targetSignatureBase), *atm);
}

bool etxyz::initThreat() {
    return atm != nullptr && threat != nullptr &&
           initBody(
               *threat, sorvane::reflectancePath(threatSignatureBase), sorvane::geometryPath(threatModelBase),
               sorvane::radiancePath(threatSignatureBase), *atm);
}

bool etxyz::initTerrain() {
    return atm != nullptr && terrain != nullptr && initTiles(*terrain, terrainTopoPath, terrainRadPath);
}

void etxyz::InitHardbodies() {
    initTarget();
    initThreat();
    initTerrain();
    hardbodiesInitialized = true;
}
