// The files that an engagement's bodies and terrain are made of.
#include "modelfiles.h"

#include <QDir>
#include <QFile>

#include "dataroot.h"
#include "etxyz.h"

namespace {
void addFile(StampedFiles& files, const QString& path) {
    files.push_back({path, fileStamp(path)});
}

void addFolder(StampedFiles& files, const QString& folder) {
    for (const QString& name : QDir(folder).entryList(QDir::Files, QDir::Name))
        addFile(files, QDir(folder).filePath(name));
}

QString shaderFolder() {
    return QFile::decodeName(dataPath("openglshaders/").c_str());
}

StampedFiles
bodyFiles(const QString& brdf, const QString& geometryBase, const QString& signatureBase, const QString& atmosphere) {
    StampedFiles files;
    addFile(files, brdf);
    addFile(files, geometryBase + QStringLiteral(".vnl"));
    addFile(files, geometryBase + QStringLiteral(".sff-txt")); // form factors
    addFile(files, signatureBase + QStringLiteral(".rad"));
    addFile(files, atmosphere);
    addFolder(files, shaderFolder());
    return files;
}
} // namespace

ModelFiles modelFilesOf(const etxyz& engagement) {
    const QString atmosphere = engagement.targetSignatureBase + QStringLiteral(".atm");
    ModelFiles files;
    files.target =
        bodyFiles(engagement.targetBrdfPath, engagement.targetGeometryBase, engagement.targetSignatureBase, atmosphere);
    files.threat = bodyFiles(
        engagement.threatSignatureBase + QStringLiteral(".brdf"), engagement.threatModelBase,
        engagement.threatSignatureBase, atmosphere);
    // The paths come first: two rasters of one folder are two terrains.
    addFile(files.terrain, engagement.terrainTopoPath);
    addFile(files.terrain, engagement.terrainRadPath);
    const QString topography = QFileInfo(engagement.terrainTopoPath).path();
    const QString radiances = QFileInfo(engagement.terrainRadPath).path();
    addFolder(files.terrain, topography);
    if (radiances != topography)
        addFolder(files.terrain, radiances);
    addFolder(files.terrain, shaderFolder());
    return files;
}
