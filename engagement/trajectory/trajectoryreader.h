// Reads a trajectory: twelve header lines, then a record of lines for each sample. Pure parsers over an open device.
#pragma once

#include <functional>
#include <vector>

#include <QMap>
#include <QString>

#include "keyframe.h"

class QIODevice;

// The header as the file gives it, before any fallback.
struct TrajectoryFileHeader {
    QString terrainTopoPath;
    QString terrainRadPath;
    QString targetSignaturePath;
    float terrainTripleA[3] = {};
    float terrainTripleB[3] = {};
    QString targetGeometryPath;
    QString targetBrdfPath;
    QString text9;
    int int10 = 0;
    QString threatId;
    float fieldOfView = 1.5F; // degrees; what a malformed one leaves
};

// Takes twelve logical lines. Those that the data lack count as blank.
TrajectoryFileHeader readTrajectoryHeader(QIODevice* device, bool isProcess);

// The records from where the device stands to the end of the data or the first blank line in a record's first place. A
// truncated last record is kept, with zeros for what is missing. A later record replaces an earlier one of its time.
QMap<double, keyframe> readRecords(QIODevice* device, bool isProcess);

// Hands out the same records one after the other, those too that a later one of their time replaces: for who needs no
// map, which costs as much as reading. The sample comes without its flares; both are valid during the call. False when
// the data end within the last record.
using RecordSink = std::function<void(const keyframe& sample, const std::vector<flareKeyframe>& flares)>;
bool readEachRecord(QIODevice* device, bool isProcess, const RecordSink& take);

// The same as readRecords in the plainest way: readUncommented for each line and QString's conversions for each number.
// readRecords is checked against it.
QMap<double, keyframe> readRecordsLineByLine(QIODevice* device, bool isProcess);
