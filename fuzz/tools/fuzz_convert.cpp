// Fuzzes what `sorvane convert` reads and writes: a trajectory that is written again loads back equal, and so does any
// piece of it, moved and turned, as long as it is told alike twice.
#include <cstdint>
#include <cstdlib>

#include <QBuffer>

#include "exactreader.h"
#include "exactwriter.h"
#include "placement.h"
#include "timecut.h"
#include "trajectoryreader.h"
#include "unwrap.h"

using namespace sorvane;

namespace {
template <class Read> auto readFrom(const QByteArray& text, Read read) {
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    return read(&buffer);
}

// As the viewer has them, with the number of flares that there are.
QMap<double, keyframe> samplesOf(const QByteArray& text) {
    return readFrom(text, [](QIODevice* device) {
        readTrajectoryHeader(device, false);
        QMap<double, keyframe> samples = readRecords(device, false);
        for (keyframe& sample : samples)
            sample.flareCount = static_cast<int>(sample.flares.size());
        return samples;
    });
}

ExactTrajectory exactly(const QByteArray& text) {
    return readFrom(text, [](QIODevice* device) { return readExactly(device, false); });
}

QByteArray written(const ExactTrajectory& trajectory) {
    return QByteArray::fromStdString(writtenTrajectory(trajectory));
}

// Band counts are not drawn, and a line of three equal half axes may be written with any.
bool areAlike(QMap<double, keyframe> a, QMap<double, keyframe> b) {
    for (QMap<double, keyframe>* samples : {&a, &b})
        for (keyframe& sample : *samples)
            for (flareKeyframe& flare : sample.flares)
                flare.bandCount = 0;
    return a == b;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArray text(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    ExactTrajectory trajectory = exactly(text);
    const QByteArray again = written(trajectory);
    if (!areAlike(samplesOf(text), samplesOf(again)) || written(exactly(again)) != again)
        std::abort();
    if (trajectory.samples.empty())
        return 0;

    const double first = trajectory.samples.front().time;
    const double last = trajectory.samples.back().time;
    unwrapAngles(trajectory.samples);
    trajectory.samples = timeCut(trajectory.samples, first + (last - first) / 3.0, last - (last - first) / 3.0);
    place(trajectory.samples, {{1.0, -2.0, 0.5}, 0.3048, Axes::parse("z,-x,y"), std::nullopt});
    if (fitsSinglePrecision(trajectory.samples))
        written(trajectory);
    return 0;
}
