// Reads the records of a trajectory in the plainest way: each line by readUncommented, each number by QString's
// conversions. The readers that are built for speed are compared with it.
#pragma once

#include <utility>
#include <vector>

#include <QMap>
#include <QString>

#include "keyframe.h"
#include "linereading.h"
#include "textwords.h"
#include "trajectorylayout.h"

namespace sorvane {
// The logical lines of a device, one QString each.
class LinesOneByOne {
public:
    LinesOneByOne(QIODevice* device, bool isProcess) : device_(device), isProcess_(isProcess) {}

    bool next() {
        line_ = sorvane::atEnd(device_, isProcess_) ? QString() : readUncommented(device_, isProcess_);
        return !line_.isNull();
    }
    template <class Use> auto withWords(Use use) const { return use(TextWords(line_)); }

private:
    QIODevice* device_;
    bool isProcess_;
    QString line_;
};

inline QMap<double, keyframe> readRecordsLineByLine(QIODevice* device, bool isProcess) {
    LinesOneByOne lines(device, isProcess);
    QMap<double, keyframe> samples;
    std::vector<Flare> flares;
    while (nextRecord(lines)) {
        Sample exact;
        readRecord(lines, exact, flares);
        keyframe sample = singlePrecision(exact);
        for (const Flare& flare : flares)
            sample.flares.append(singlePrecision(flare));
        samples.insert(sample.time, sample);
    }
    return samples;
}
} // namespace sorvane
