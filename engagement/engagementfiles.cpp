// Which files an engagement goes by: those that its trajectory names, or the stock ones in their place.
#include "engagementfiles.h"

#include <algorithm>

#include <QFile>
#include <QStringList>

#include "atmfile.h"
#include "brdffile.h"
#include "dataroot.h"
#include "radfile.h"
#include "subfacetfile.h"
#include "threatnames.h"
#include "trajectoryreader.h"
#include "vnlfile.h"

namespace sorvane {
namespace {
constexpr float kStockTripleA[3] = {6.6F, 6.6F, 1.0F};
constexpr float kStockTripleB[3] = {-10000.0F, -10000.0F, -2.0F};
constexpr qsizetype kExtensionLength = 4; // with its dot

QString stockPath(const char* relativePath) {
    return QFile::decodeName(dataPath(relativePath).c_str());
}

QString withoutExtension(QString path) {
    path.chop(kExtensionLength);
    return path;
}

QString withExtension(const QString& base, const char* extension) {
    return base + u'.' + QLatin1String(extension);
}

QString firstCharacterAfter(const QString& text, const QString& mark) {
    const qsizetype at = text.indexOf(mark);
    return at < 0 ? QString() : text.mid(at + mark.size(), 1);
}

// The band digit of the threat's files, from the name of the target's signature files.
QString bandOf(const QString& signatureBase) {
    QString band = firstCharacterAfter(signatureBase, QStringLiteral("b000"));
    if (band.isEmpty())
        band = firstCharacterAfter(signatureBase, QStringLiteral("band"));
    const QStringList parts = signatureBase.split(u'_', Qt::SkipEmptyParts);
    if (parts.contains(QStringLiteral("nir")))
        band = QStringLiteral("1");
    else if (parts.contains(QStringLiteral("midir")))
        band = QStringLiteral("4");
    else if (parts.contains(QStringLiteral("vis")))
        band = QStringLiteral("6");
    if (band.isEmpty())
        band = QStringLiteral("4");
    return band;
}

void takeStockTerrain(EngagementFiles& files) {
    files.isStockTerrain = true;
    files.terrainTopoPath = stockPath("ter0010/ter0010.top");
    files.terrainRadPath = stockPath("ter0010/ter0010_w0001_t1500_b0001.rad");
    std::ranges::copy(kStockTripleA, files.terrainTripleA);
    std::ranges::copy(kStockTripleB, files.terrainTripleB);
}

void takeStockTarget(EngagementFiles& files) {
    files.isStockTarget = true;
    files.targetBrdfPath = stockPath("tgt4004/tgt4004_b0001_mat0004.brdf");
    files.targetGeometryBase = stockPath("tgt4004/tgt4004");
    files.targetSignatureBase = stockPath("tgt4004/tgt4004_b0001_mat0004_ter0010_w0001_t1500_rad0003");
    files.band = QStringLiteral("1");
}

void nameThreatFiles(const QString& threatId, EngagementFiles& files) {
    files.threatModelBase = stockPath("") + getThreatName(threatId);
    files.threatSignatureBase = files.threatModelBase + QStringLiteral("_b000") + files.band;
}
} // namespace

QString geometryPath(const QString& geometryBase) {
    return withExtension(geometryBase, VnlFile::kExtension);
}

QString formFactorPath(const QString& geometryBase) {
    return withExtension(geometryBase, SubfacetFile::kExtension);
}

QString reflectancePath(const QString& signatureBase) {
    return withExtension(signatureBase, BrdfFile::kExtension);
}

QString radiancePath(const QString& signatureBase) {
    return withExtension(signatureBase, RadFile::kExtension);
}

QString atmospherePath(const QString& signatureBase) {
    return withExtension(signatureBase, AtmFile::kExtension);
}

EngagementFiles namedFiles(const TrajectoryFileHeader& header) {
    EngagementFiles files;
    files.terrainTopoPath = header.terrainTopoPath;
    files.terrainRadPath = header.terrainRadPath;
    std::ranges::copy(header.terrainTripleA, files.terrainTripleA);
    std::ranges::copy(header.terrainTripleB, files.terrainTripleB);
    files.targetSignatureBase = withoutExtension(header.targetSignaturePath);
    files.targetGeometryBase = withoutExtension(header.targetGeometryPath);
    files.targetBrdfPath = header.targetBrdfPath;
    files.band = bandOf(files.targetSignatureBase);
    nameThreatFiles(header.threatId, files);
    return files;
}

EngagementFiles chooseFiles(const TrajectoryFileHeader& header) {
    EngagementFiles files = namedFiles(header);
    if (!QFile::exists(files.terrainTopoPath) || !QFile::exists(files.terrainRadPath))
        takeStockTerrain(files);
    if (!QFile::exists(files.targetBrdfPath) || !QFile::exists(files.targetGeometryPath()) ||
        !QFile::exists(files.targetRadiancePath()) || !QFile::exists(files.atmospherePath()))
        takeStockTarget(files);
    nameThreatFiles(header.threatId, files);
    return files;
}
} // namespace sorvane
