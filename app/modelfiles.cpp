// The files that an engagement's bodies and terrain are made of.
#include "modelfiles.h"

#include <algorithm>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "dataroot.h"
#include "engagementfiles.h"
#include "etxyz.h"
#include "terrainxmlparser.h"

namespace sorvane {
namespace {
void addFile(StampedFiles& files, const QString& path) {
    files.push_back({path, fileStamp(path)});
}

// The files of a folder whose names begin with `prefix`.
void addFolder(StampedFiles& files, const QDir& folder, const QString& prefix = {}) {
    for (const QString& name : folder.entryList(QDir::Files, QDir::Name))
        if (name.startsWith(prefix))
            addFile(files, folder.filePath(name));
}

QDir shaderFolder() {
    return {QFile::decodeName(dataPath("openglshaders/").c_str())};
}

StampedFiles
bodyFiles(const QString& brdf, const QString& geometryBase, const QString& signatureBase, const QString& atmosphere) {
    StampedFiles files;
    addFile(files, brdf);
    addFile(files, sorvane::geometryPath(geometryBase));
    addFile(files, sorvane::formFactorPath(geometryBase)); // form factors
    addFile(files, sorvane::radiancePath(signatureBase));
    addFile(files, atmosphere);
    addFolder(files, shaderFolder());
    return files;
}

StampedFiles terrainFiles(const QString& topography, const QString& radiances) {
    StampedFiles files;
    addFile(files, topography);
    addFile(files, radiances);
    const QFileInfo raster(topography);
    const QString stem = raster.completeBaseName() + u'.';
    // A description names files as it likes.
    const bool isDescribed = QFile::exists(raster.dir().filePath(stem + QLatin1String(sorvane::kDescriptionExtension)));
    addFolder(files, raster.dir(), isDescribed ? QString() : stem);
    addFolder(files, shaderFolder());
    return files;
}
} // namespace

QStringList changedFiles(const StampedFiles& before, const StampedFiles& now) {
    QStringList changed;
    const auto addMissing = [&changed](const StampedFiles& from, const StampedFiles& in) {
        for (const StampedFile& file : from)
            if (std::ranges::find(in, file) == in.end() && !changed.contains(file.path))
                changed << file.path;
    };
    addMissing(now, before);
    addMissing(before, now);
    return changed;
}

ModelFiles modelFilesOf(const etxyz& engagement) {
    const QString atmosphere = sorvane::atmospherePath(engagement.targetSignatureBase);
    ModelFiles files;
    files.target =
        bodyFiles(engagement.targetBrdfPath, engagement.targetGeometryBase, engagement.targetSignatureBase, atmosphere);
    files.threat = bodyFiles(
        sorvane::reflectancePath(engagement.threatSignatureBase), engagement.threatModelBase,
        engagement.threatSignatureBase, atmosphere);
    files.terrain = terrainFiles(engagement.terrainTopoPath, engagement.terrainRadPath);
    return files;
}
} // namespace sorvane
