// Reads a trajectory exactly as the viewer does and tells a watcher what the viewer passes over in silence.
#include "watchedreader.h"

#include "trajectorylayout.h"

namespace sorvane {
namespace {
// The header's lines: all by way of QString, as the viewer reads them.
class WatchedHeaderLines {
public:
    explicit WatchedHeaderLines(WatchedLines& lines) : lines_(lines) {}

    bool next() {
        const bool isThere = lines_.next();
        linesRead += isThere ? 1 : 0;
        numbers.at(at_++) = lines_.number();
        return isThere;
    }
    QString text() const { return lines_.text(); }
    template <class Use> auto withWords(Use use) { return lines_.withTextWords(use); }

    std::array<std::int64_t, 12> numbers{};
    int linesRead = 0;

private:
    WatchedLines& lines_;
    std::size_t at_ = 0;
};

std::int64_t countLinesWithWords(WatchedLines& lines) {
    std::int64_t count = 0;
    while (lines.next())
        count += lines.wordCount() > 0 ? 1 : 0;
    return count;
}
} // namespace

void readWatched(QIODevice* device, bool isProcess, TrajectoryWatcher& watcher) {
    WatchedLines lines(device, isProcess);
    WatchedHeaderLines headerLines(lines);
    const TrajectoryFileHeader header = readHeaderFrom(headerLines);
    watcher.header({header, headerLines.numbers, headerLines.linesRead, lines.faults()});

    std::vector<Flare> flares;
    bool isRecord = nextRecord(lines);
    while (isRecord) {
        lines.beginRecord();
        const std::int64_t line = lines.number();
        const qsizetype headWords = lines.wordCount();
        Sample sample;
        const bool isWhole = readRecord(lines, sample, flares);
        watcher.record({sample, flares, line, headWords, !isWhole, lines.faults()});
        isRecord = nextRecord(lines);
    }
    if (!lines.text().isNull()) { // at the end of the data it is null
        const std::int64_t blank = lines.number();
        watcher.blankLine(blank, countLinesWithWords(lines));
    }
    for (const std::int64_t line : lines.cutLines())
        watcher.cutLine(line);
}
} // namespace sorvane
