// Fuzzes the trajectory reader: the header, then the records through two readers that must agree bit for bit however
// the bytes arrive: the line by line one and the fast one in single precision, or the fast one and the watched one in
// double precision, which then are packed and unpacked. The first byte says which of them, and how many bytes a read
// gives.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include <QBuffer>

#include "devices.h"
#include "identical.h"
#include "linebylinereader.h"
#include "packedseries.h"
#include "trajectoryreader.h"
#include "watchedreader.h"

using namespace sorvane;

namespace {
// Keeps what the watched reader tells as the viewer would.
class Keeper final : public TrajectoryWatcher {
public:
    void header(const WatchedHeader& told) override { read = told.header; }
    void record(const WatchedRecord& told) override {
        keyframe sample = singlePrecision(told.sample);
        for (const Flare& flare : told.flares)
            sample.flares.append(singlePrecision(flare));
        samples.insert(sample.time, sample);
        series.add(told.sample, told.flares);
    }
    void blankLine(std::int64_t, std::int64_t) override {}
    void cutLine(std::int64_t) override {}

    TrajectoryFileHeader read;
    QMap<double, keyframe> samples;
    SampleSeries series;
};

bool identicalHeaders(const TrajectoryFileHeader& a, const TrajectoryFileHeader& b) {
    return a.terrainTopoPath == b.terrainTopoPath && a.terrainRadPath == b.terrainRadPath &&
           a.targetSignaturePath == b.targetSignaturePath && identical(a.terrainTripleA, b.terrainTripleA) &&
           identical(a.terrainTripleB, b.terrainTripleB) && a.targetGeometryPath == b.targetGeometryPath &&
           a.targetBrdfPath == b.targetBrdfPath && a.text9 == b.text9 && a.int10 == b.int10 &&
           a.threatId == b.threatId && identical(a.fieldOfView, b.fieldOfView);
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const QByteArray text(reinterpret_cast<const char*>(data) + 1, static_cast<qsizetype>(size) - 1);

    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly | QIODevice::Text);
    const TrajectoryFileHeader header = readTrajectoryHeader(&buffer, false);

    if (*data % 3 == 0) {
        SampleSeries series;
        bool isAllRead = true;
        const QMap<double, keyframe> samples = readRecords(&buffer, false, series, isAllRead);
        TrickleDevice trickle(text, 1 + *data);
        Keeper keeper;
        readWatched(&trickle, false, keeper);
        keeper.series.putInOrder();
        if (!identicalHeaders(keeper.read, header) || !identical(keeper.samples, samples) ||
            !identical(keeper.series, series) || !identical(PackedSeries(series).unpacked(), series))
            std::abort();
        return 0;
    }
    const qint64 recordsAt = buffer.pos();
    const QMap<double, keyframe> plain = readRecordsLineByLine(&buffer, false);
    if (*data % 3 == 1) {
        buffer.seek(recordsAt);
        if (!identical(readRecords(&buffer, false), plain))
            std::abort();
    } else {
        TrickleDevice trickle(text, 1 + *data);
        readTrajectoryHeader(&trickle, false);
        if (!identical(readRecords(&trickle, false), plain))
            std::abort();
    }
    return 0;
}
