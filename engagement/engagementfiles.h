// Which files an engagement goes by: those that its trajectory names, or the stock ones in their place.
#pragma once

#include <QString>

struct TrajectoryFileHeader;

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

    QString atmospherePath() const { return targetSignatureBase + QStringLiteral(".atm"); }
    QString targetGeometryPath() const { return targetGeometryBase + QStringLiteral(".vnl"); }
    QString targetRadiancePath() const { return targetSignatureBase + QStringLiteral(".rad"); }
    QString threatGeometryPath() const { return threatModelBase + QStringLiteral(".vnl"); }
    QString threatRadiancePath() const { return threatSignatureBase + QStringLiteral(".rad"); }
    QString threatBrdfPath() const { return threatSignatureBase + QStringLiteral(".brdf"); }
};

// The files that the header names, whether or not they are there.
EngagementFiles namedFiles(const TrajectoryFileHeader& header);

// The files that the engagement goes by. Asks the disk which of those named exist; the stock files and the threat's
// are taken unseen. A stock terrain brings its triples along, a stock target its band.
EngagementFiles chooseFiles(const TrajectoryFileHeader& header);
