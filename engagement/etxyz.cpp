// One loaded engagement: which files and parameters it goes by.
#include "etxyz.h"

#include <algorithm>
#include <new>
#include <utility>

#include <QFile>

#include "engagementfiles.h"
#include "trajectoryinput.h"
#include "trajectoryreader.h"

using namespace sorvane;

void etxyz::LoadETXYZ(const QString& path) {
    try {
        const TrajectoryInput input = openTrajectory(path);
        if (input.device != nullptr)
            load(input);
    } catch (const std::bad_alloc&) {
        keyframes.clear();
        samples = {};
    }
}

TrajectoryFileHeader etxyz::load(const TrajectoryInput& input) {
    TrajectoryFileHeader header = parse(input);
    makeModels();
    return header;
}

TrajectoryFileHeader etxyz::parse(const TrajectoryInput& input) {
    TrajectoryFileHeader header = readTrajectoryHeader(input.device.get(), input.isProcess);
    takeHeader(header);
    SampleSeries series;
    keyframes = readRecords(input.device.get(), input.isProcess, series, isWhollyRead);
    samples = KeptSeries(std::move(series));
    samples.pack();
    isWhollyRead = isWhollyRead && header.isWhole;
    takeFiles(chooseFiles(header));
    return header;
}

void etxyz::makeModels() {
    target = std::make_unique<Hardbody>();
    threat = std::make_unique<Hardbody>();
    terrain = std::make_unique<Terrain>();
    atm = std::make_unique<AtmFile>();
    atm->Load(QFile::encodeName(atmospherePath(targetSignatureBase)).toStdString());
}

void etxyz::takeHeader(const TrajectoryFileHeader& header) {
    headerText9 = header.text9;
    headerInt10 = header.int10;
    threatId = header.threatId;
    fieldOfView = header.fieldOfView;
}

void etxyz::takeFiles(const EngagementFiles& files) {
    terrainTopoPath = files.terrainTopoPath;
    terrainRadPath = files.terrainRadPath;
    std::ranges::copy(files.terrainTripleA, terrainTripleA);
    std::ranges::copy(files.terrainTripleB, terrainTripleB);
    targetSignatureBase = files.targetSignatureBase;
    targetGeometryBase = files.targetGeometryBase;
    targetBrdfPath = files.targetBrdfPath;
    isStockTarget = files.isStockTarget;
    band = files.band;
    threatModelBase = files.threatModelBase;
    threatSignatureBase = files.threatSignatureBase;
}
