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

namespace {
// The logical lines of a device, one QString each.
class TextLineSource {
public:
    TextLineSource(QIODevice* device, bool isProcess) : device_(device), isProcess_(isProcess) {}

    bool next() {
        if (::atEnd(device_, isProcess_))
            return false;
        line_ = readUncommented(device_, isProcess_);
        return !line_.isNull();
    }

    // Calls `use` with a cursor at the line's first word.
    template <class Use> auto withWords(Use use) const { return use(TextWords(line_)); }

private:
    QIODevice* device_;
    bool isProcess_;
    QString line_;
};

// The same lines from large pieces. Those with unusual bytes take the way of the other source.
class PieceLineSource {
public:
    PieceLineSource(QIODevice* device, bool isProcess) : lines_(device, isProcess) {}

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

    template <class Use> auto withWords(Use use) const {
        return isPlain_ ? use(PlainWords(line_)) : use(TextWords(text_));
    }

private:
    TrajectoryLines lines_;
    std::string_view line_;
    QString text_;
    bool isPlain_ = true;
};

// The header's lines. Those that the data lack are null.
class HeaderLineSource {
public:
    HeaderLineSource(QIODevice* device, bool isProcess) : device_(device), isProcess_(isProcess) {}

    bool next() {
        line_ = readUncommented(device_, isProcess_);
        return !line_.isNull();
    }
    const QString& text() const { return line_; }
    template <class Use> auto withWords(Use use) const { return use(TextWords(line_)); }

private:
    QIODevice* device_;
    bool isProcess_;
    QString line_;
};

// Hands each record to `take`, the sample without its flares. False when the last one is truncated.
template <class LineSource, class Take> bool forEachRecord(LineSource& lines, Take take) {
    std::vector<flareKeyframe> flares; // reused, so that whoever keeps them allocates once, at their size
    bool isWhole = true;
    while (nextRecord(lines)) {
        keyframe sample;
        isWhole = readRecord(lines, sample, flares);
        take(sample, std::as_const(flares));
    }
    return isWhole;
}

template <class LineSource> QMap<double, keyframe> readRecordsFrom(LineSource lines) {
    std::map<double, keyframe> samples;
    forEachRecord(lines, [&](keyframe& sample, const std::vector<flareKeyframe>& flares) {
        sample.flares = QList<flareKeyframe>(flares.begin(), flares.end());
        // Times mostly ascend: with the hint that takes constant time.
        const double time = sample.time;
        samples.insert_or_assign(samples.end(), time, std::move(sample));
    });
    return QMap<double, keyframe>(std::move(samples));
}
} // namespace

TrajectoryFileHeader readTrajectoryHeader(QIODevice* device, bool isProcess) {
    HeaderLineSource lines(device, isProcess);
    return readHeaderFrom(lines);
}

QMap<double, keyframe> readRecords(QIODevice* device, bool isProcess) {
    return readRecordsFrom(PieceLineSource(device, isProcess));
}

bool readEachRecord(QIODevice* device, bool isProcess, const RecordSink& take) {
    PieceLineSource lines(device, isProcess);
    return forEachRecord(lines, take);
}

QMap<double, keyframe> readRecordsLineByLine(QIODevice* device, bool isProcess) {
    return readRecordsFrom(TextLineSource(device, isProcess));
}
