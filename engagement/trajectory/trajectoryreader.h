// Reads a trajectory from an open device: twelve header lines, then a record of lines for each sample.
#pragma once

#include <functional>
#include <vector>

#include <QMap>
#include <QString>

#include "keyframe.h"
#include "sampleseries.h"

class QIODevice;

namespace sorvane {
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
    bool isWhole = true;      // all of its numbers could be read
};

// Reads the twelve lines of the header. A line that the data lack counts as blank. Of each reader here: with
// `isProcess` the device is a process, whose data are waited for.
TrajectoryFileHeader readTrajectoryHeader(QIODevice* device, bool isProcess);

// Reads the records, from where the device stands. They end with the data, or with a blank line where a record would
// begin. When the data end within a record, it is kept, and what is missing of it is 0. Of two records with the same
// time the later one is kept.
QMap<double, keyframe> readRecords(QIODevice* device, bool isProcess);
// The same, with their numbers as the text gives them in `samples`, which is to be empty. `isAllRead` becomes false
// when a word is missing or malformed, or the last record is truncated.
QMap<double, keyframe> readRecords(QIODevice* device, bool isProcess, SampleSeries& samples, bool& isAllRead);

// How the records of a trajectory have ended.
struct RecordsEnd {
    bool isWhole = true;        // the last record is not truncated
    bool isAllConverted = true; // every word was there and a number
};

// Hands every record to `take`, in the order of the file; two with the same time are both handed out. Quicker than
// readRecords, where half of the time goes into the map. Both arguments are valid during the call only.
using RecordSink = std::function<void(const Sample& sample, const std::vector<Flare>& flares)>;
RecordsEnd readEachRecord(QIODevice* device, bool isProcess, const RecordSink& take);
} // namespace sorvane
