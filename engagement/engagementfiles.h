// Which files an engagement goes by: those that its trajectory names, or the stock ones in their place.
#pragma once

#include <QString>

namespace sorvane {
struct TrajectoryFileHeader;

// The files of a body under the path of its geometry or of its signature, without an extension.
QString geometryPath(const QString& geometryBase);
QString formFactorPath(const QString& geometryBase);
QString reflectancePath(const QString& signatureBase);
QString radiancePath(const QString& signatureBase);
QString atmospherePath(const QString& signatureBase);

struct EngagementFiles {
    bool isStockTerrain = false; // one of the two terrain files named is not there
    QString terrainTopoPath;
    QString terrainRadPath;
    float terrainTripleA[3] = {};
    float terrainTripleB[3] = {};

    bool isStockTarget = false;  // one of the four target files named is not there
    QString targetSignatureBase; // path without its extension
    QString targetGeometryBase;  // path without its extension
    QString targetBrdfPath;

    QString band; // one digit; of the threat's files
    QString threatModelBase;
    QString threatSignatureBase;

    QString atmospherePath() const { return sorvane::atmospherePath(targetSignatureBase); }
    QString targetGeometryPath() const { return sorvane::geometryPath(targetGeometryBase); }
    QString targetRadiancePath() const { return sorvane::radiancePath(targetSignatureBase); }
    QString threatGeometryPath() const { return sorvane::geometryPath(threatModelBase); }
    QString threatRadiancePath() const { return sorvane::radiancePath(threatSignatureBase); }
    QString threatBrdfPath() const { return sorvane::reflectancePath(threatSignatureBase); }
};

// The files that the header names, whether or not they are there.
EngagementFiles namedFiles(const TrajectoryFileHeader& header);

// The files that the engagement goes by. Asks the disk which of those named exist; the stock files and the threat's
// are taken unseen. A stock terrain brings its triples along, a stock target its band.
EngagementFiles chooseFiles(const TrajectoryFileHeader& header);
} // namespace sorvane
