// Reads a trajectory: twelve header lines, then a record of lines for each sample. Pure parsers over an open device.
#include "trajectoryreader.h"

#include <map>
#include <utility>
#include <vector>

#include <QIODevice>

#include "linereading.h"
#include "plainwords.h"
#include "textwords.h"
#include "trajectorylayout.h"
#include "trajectorylines.h"

namespace sorvane {
namespace {
// The logical lines of a device, from large pieces. Those with unusual bytes take the way through QString.
class RecordLines {
public:
    RecordLines(QIODevice* device, bool isProcess) : lines_(device, isProcess) {}

    bool next() {
        while (lines_.next(line_)) {
            if (!line_.empty() && line_.front() == '#')
                continue;
            isPlain_ = lines_.isPlain(line_);
            if (isPlain_)
                return true;
            text_ = simplifiedText(QByteArrayView(line_.data(), static_cast<qsizetype>(line_.size())));
            if (!text_.isNull())
                return true;
        }
        return false;
    }

    template <class Use> auto withWords(Use use) {
        const NotingConversion noting(isAllConverted_);
        return isPlain_ ? use(BasicPlainWords(line_, noting)) : use(BasicTextWords<NotingConversion>(text_, noting));
    }

    // Whether every word that was asked for so far was there and a number.
    bool isAllConverted() const { return isAllConverted_; }

private:
    TrajectoryLines lines_;
    std::string_view line_;
    QString text_;
    bool isPlain_ = true;
    bool isAllConverted_ = true;
};

// The header's lines. Those that the data lack are null.
class HeaderLines {
public:
    HeaderLines(QIODevice* device, bool isProcess) : device_(device), isProcess_(isProcess) {}

    bool next() {
        line_ = readUncommented(device_, isProcess_);
        return !line_.isNull();
    }
    const QString& text() const { return line_; }
    template <class Use> auto withWords(Use use) {
        return use(BasicTextWords<NotingConversion>(line_, NotingConversion(isAllConverted_)));
    }
    bool isAllConverted() const { return isAllConverted_; }

private:
    QIODevice* device_;
    bool isProcess_;
    QString line_;
    bool isAllConverted_ = true;
};

// Hands each record to `take`.
template <class Take> RecordsEnd forEachRecord(RecordLines lines, Take take) {
    std::vector<Flare> flares; // reused, so that whoever keeps them allocates once, at their size
    bool isWhole = true;
    while (nextRecord(lines)) {
        Sample sample;
        isWhole = readRecord(lines, sample, flares);
        take(sample, std::as_const(flares));
    }
    return {isWhole, lines.isAllConverted()};
}

// As the viewer draws them.
class KeyframeMap {
public:
    void add(const Sample& sample, const std::vector<Flare>& flares) {
        keyframe rounded = singlePrecision(sample);
        rounded.flares.reserve(static_cast<qsizetype>(flares.size()));
        for (const Flare& flare : flares)
            rounded.flares.append(singlePrecision(flare));
        // Times mostly ascend: with the hint that takes constant time.
        keyframes_.insert_or_assign(keyframes_.end(), sample.time, std::move(rounded));
    }

    QMap<double, keyframe> take() { return QMap<double, keyframe>(std::move(keyframes_)); }

private:
    std::map<double, keyframe> keyframes_;
};
} // namespace

TrajectoryFileHeader readTrajectoryHeader(QIODevice* device, bool isProcess) {
    HeaderLines lines(device, isProcess);
    TrajectoryFileHeader header = readHeaderFrom(lines);
    header.isWhole = lines.isAllConverted();
    return header;
}

QMap<double, keyframe> readRecords(QIODevice* device, bool isProcess) {
    KeyframeMap keyframes;
    forEachRecord(RecordLines(device, isProcess), [&](const Sample& sample, const std::vector<Flare>& flares) {
        keyframes.add(sample, flares);
    });
    return keyframes.take();
}

QMap<double, keyframe> readRecords(QIODevice* device, bool isProcess, SampleSeries& samples, bool& isAllRead) {
    KeyframeMap keyframes;
    const RecordsEnd end =
        forEachRecord(RecordLines(device, isProcess), [&](const Sample& sample, const std::vector<Flare>& flares) {
            keyframes.add(sample, flares);
            samples.add(sample, flares);
        });
    samples.putInOrder();
    isAllRead = end.isWhole && end.isAllConverted;
    return keyframes.take();
}

RecordsEnd readEachRecord(QIODevice* device, bool isProcess, const RecordSink& take) {
    return forEachRecord(RecordLines(device, isProcess), take);
}
} // namespace sorvane
