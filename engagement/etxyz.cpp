// One loaded engagement: which files and parameters it goes by.
#include "etxyz.h"

#include <algorithm>
#include <new>

#include <QFile>
#include <QStringList>

#include "dataroot.h"
#include "threatnames.h"
#include "trajectoryinput.h"
#include "trajectoryreader.h"

namespace {
constexpr float kDefaultTripleA[3] = {6.6F, 6.6F, 1.0F};
constexpr float kDefaultTripleB[3] = {-10000.0F, -10000.0F, -2.0F};
constexpr qsizetype kExtensionLength = 4; // with its dot

QString stockPath(const char* relativePath) {
    return QFile::decodeName(dataPath(relativePath).c_str());
}

QString withoutExtension(QString path) {
    path.chop(kExtensionLength);
    return path;
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
} // namespace

void etxyz::LoadETXYZ(const QString& path) {
    try {
        load(path);
    } catch (const std::bad_alloc&) {
        keyframes.clear();
    }
}

void etxyz::load(const QString& path) {
    const TrajectoryInput input = openTrajectory(path);
    if (input.device == nullptr)
        return;
    takeHeader(readTrajectoryHeader(input.device.get(), input.isProcess));
    keyframes = readRecords(input.device.get(), input.isProcess);
    chooseTargetFiles();
    threat = std::make_unique<Hardbody>();
    threatModelBase = stockPath("") + getThreatName(threatId);
    threatSignatureBase = threatModelBase + QStringLiteral("_b000") + band;
}

void etxyz::takeHeader(const TrajectoryFileHeader& header) {
    terrain = std::make_unique<Terrain>();
    if (QFile::exists(header.terrainTopoPath) && QFile::exists(header.terrainRadPath)) {
        terrainTopoPath = header.terrainTopoPath;
        terrainRadPath = header.terrainRadPath;
        std::ranges::copy(header.terrainTripleA, terrainTripleA);
        std::ranges::copy(header.terrainTripleB, terrainTripleB);
    } else {
        terrainTopoPath = stockPath("ter0010/ter0010.top");
        terrainRadPath = stockPath("ter0010/ter0010_w0001_t1500_b0001.rad");
        std::ranges::copy(kDefaultTripleA, terrainTripleA);
        std::ranges::copy(kDefaultTripleB, terrainTripleB);
    }
    targetSignatureBase = withoutExtension(header.targetSignaturePath);
    targetGeometryBase = withoutExtension(header.targetGeometryPath);
    targetBrdfPath = header.targetBrdfPath;
    headerText9 = header.text9;
    headerInt10 = header.int10;
    threatId = header.threatId;
    fieldOfView = header.fieldOfView;
}

void etxyz::chooseTargetFiles() {
    target = std::make_unique<Hardbody>();
    atm = std::make_unique<AtmFile>();
    band = QStringLiteral("1");
    const QString atmosphere = targetSignatureBase + QStringLiteral(".atm");
    if (QFile::exists(targetBrdfPath) && QFile::exists(targetGeometryBase + QStringLiteral(".vnl")) &&
        QFile::exists(targetSignatureBase + QStringLiteral(".rad")) && QFile::exists(atmosphere)) {
        atm->Load(QFile::encodeName(atmosphere).toStdString());
        band = bandOf(targetSignatureBase);
        return;
    }
    targetBrdfPath = stockPath("tgt4004/tgt4004_b0001_mat0004.brdf");
    targetGeometryBase = stockPath("tgt4004/tgt4004");
    targetSignatureBase = stockPath("tgt4004/tgt4004_b0001_mat0004_ter0010_w0001_t1500_rad0003");
    atm->Load(QFile::encodeName(targetSignatureBase + QStringLiteral(".atm")).toStdString());
}
