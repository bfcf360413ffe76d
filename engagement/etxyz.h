// One loaded engagement: the files and parameters that its trajectory file names, and its samples over time.
#pragma once

#include <memory>

#include <QMap>
#include <QString>

#include "atmfile.h"
#include "hardbody.h"
#include "keptseries.h"
#include "keyframe.h"
#include "sampleindex.h"
#include "terrain.h"

class QMenu;

namespace sorvane {
struct EngagementFiles;
struct TrajectoryFileHeader;
struct TrajectoryInput;
} // namespace sorvane

class etxyz {
public:
    // Which stored sample answers for a time between two samples.
    enum RoundingType { RoundNearest = 0, RoundDown = 1, RoundUp = 2 };

    // Reads the trajectory file at `path`, plain or, when the name ends in ".Z", through `uncompress`, into this fresh
    // object. A file that can't be read leaves the keyframes empty; nothing is reported but what AtmFile::Load finds.
    // Blocks while it reads.
    void LoadETXYZ(const QString& path);
    // The same from an open file or process. Returns the header as the file gives it, which names the files that the
    // stock ones may have replaced.
    sorvane::TrajectoryFileHeader load(const sorvane::TrajectoryInput& input);
    // Its two halves. The first one touches nothing but files, and may run on any thread; the second one makes the
    // bodies and the terrain, to be initialised, and takes the atmosphere, all by way of what the process keeps of such
    // files.
    sorvane::TrajectoryFileHeader parse(const sorvane::TrajectoryInput& input);
    void makeModels();

    // The stored sample chosen for time t (seconds) by `rounding`: the last one not after t (RoundDown), the first one
    // after t (RoundUp) or the nearer of the two, the later one at a tie. Outside the samples both are the first or the
    // last one. Needs at least one sample, as the other three do; O(log n).
    keyframe NearestKeyframe(double t, RoundingType rounding) const;
    keyframe NearestKeyframe(double t) const { return NearestKeyframe(t, RoundNearest); }
    keyframe PreviousKeyframe(double t) const { return NearestKeyframe(t, RoundDown); }
    keyframe NextKeyframe(double t) const { return NearestKeyframe(t, RoundUp); }

    // The state at time t: the samples around t blended linearly, flares matched by id; the first or last sample as it
    // is outside their range. Angles are blended as plain numbers, without wrap-around.
    keyframe InterpolatedFrame(double t) const;

    // How many samples are not after time t.
    std::size_t sampleCountAt(double t) const;

    // The sample at time 0.0. Deliberate: when there is none, an empty one is added; the terrain is drawn at its
    // threat's height.
    const keyframe& keyframeAtZero();

    // Initialises the bodies and the terrain, once. Needs a current GL context.
    void InitHardbodies();
    // Its three parts. False, after a message, for one that stays unusable: the engagement then plays without it.
    bool initTarget();
    bool initThreat();
    bool initTerrain();
    bool areHardbodiesInitialized() const { return hardbodiesInitialized; }

    // Keyed by time. Read it through const access (cbegin, std::as_const): while an index shares the map, the first
    // access that could change it copies it whole.
    QMap<double, keyframe> keyframes;
    // The same samples with all digits of the file, for measures; packed once they are read. Those that are added later
    // are not among them.
    sorvane::KeptSeries samples;
    QString terrainTopoPath;
    QString terrainRadPath;
    QString targetSignatureBase; // path without its extension
    QString targetGeometryBase;  // path without its extension
    QString targetBrdfPath;
    bool isStockTarget = false; // it stands in for one of which a file is not there
    bool isWhollyRead = true;   // no word of header and records was missing or malformed
    QString headerText9;        // the colour name: "cyan" gives the threat a cyan path
    QString threatId;
    int headerInt10 = 0;
    float fieldOfView = 1.5F; // full cone angle of the seeker, degrees
    float terrainTripleA[3] = {};
    float terrainTripleB[3] = {};
    std::unique_ptr<Hardbody> target;
    std::unique_ptr<Hardbody> threat;
    std::unique_ptr<Terrain> terrain;
    std::unique_ptr<AtmFile> atm;
    QMenu* menu = nullptr; // the engagement's sub-menu, owned by the main window
    QString band;
    QString threatModelBase;
    QString threatSignatureBase;
    bool hardbodiesInitialized = false;

private:
    // Take what the header says besides files, and the files that are chosen by it.
    void takeHeader(const sorvane::TrajectoryFileHeader& header);
    void takeFiles(const sorvane::EngagementFiles& files);

    mutable sorvane::SampleIndex sampleIndex_;
};
