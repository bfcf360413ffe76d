// The logical lines of a trajectory with their numbers, and what the reading of each found wanting.
#pragma once

#include <cstdint>
#include <vector>

#include "linereading.h"
#include "trajectorylines.h"
#include "watchedwords.h"

namespace sorvane {
// Columns count characters from 1.
struct MalformedWord {
    qsizetype column = 1;
    QString word;
    NumberKind kind = NumberKind::Real;
};

struct LineFaults {
    std::int64_t line = 0;
    int lineInRecord = 0; // 0, 1, 2, then the flares; in the header, 0 to 11
    qsizetype words = 0;
    qsizetype endColumn = 1; // behind the last word
    int missingWords = 0;    // of those that were asked for
    std::vector<MalformedWord> malformed;
};

// Lines for the templates of trajectorylayout.h. Gives the same lines as the viewer's sources.
class WatchedLines {
public:
    WatchedLines(QIODevice* device, bool isProcess) : lines_(device, isProcess) {}

    bool next() {
        if (!wordFaults_.empty()) [[unlikely]]
            describeFaults();
        ++lineInRecord_;
        while (lines_.next(line_)) {
            ++number_;
            if (line_.size() >= std::size_t{kMaximumLineBytes}) [[unlikely]]
                cutLines_.push_back(number_);
            if (!line_.empty() && line_.front() == '#')
                continue;
            isPlain_ = lines_.isPlain(line_);
            if (isPlain_ || decode()) [[likely]]
                return true;
        }
        line_ = {};
        text_ = QString();
        isPlain_ = true;
        return false;
    }

    template <class Use> auto withWords(Use use) {
        return isPlain_ ? use(WatchedPlainWords(line_, WatchedConversion(line_, wordFaults_))) : withTextWords(use);
    }
    template <class Use> auto withTextWords(Use use) {
        const QString simplified = text();
        return use(WatchedTextWords(simplified, WatchedConversion(QStringView(simplified), wordFaults_)));
    }

    // The simplified text, null at the end.
    QString text() const;
    std::int64_t number() const { return number_; }
    qsizetype wordCount() const;

    // From now on this line is the record's first, and next() goes to its second one.
    void beginRecord();
    // The lines since then that were not read whole; valid until next().
    const std::vector<LineFaults>& faults();

    // The lines so far of which only the beginning is read.
    const std::vector<std::int64_t>& cutLines() const { return cutLines_; }

private:
    bool decode();
    void describeFaults();

    TrajectoryLines lines_;
    std::string_view line_;
    QString text_; // of a line that is not plain
    bool isPlain_ = true;
    std::int64_t number_ = 0;
    int lineInRecord_ = -1;
    std::vector<WordFault> wordFaults_; // of the current line
    std::vector<LineFaults> faults_;    // of the record's lines before
    std::vector<std::int64_t> cutLines_;
};
} // namespace sorvane
