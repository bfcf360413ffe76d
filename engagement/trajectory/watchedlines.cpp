// The logical lines of a trajectory with their numbers, and what the reading of each found wanting.
#include "watchedlines.h"

#include <algorithm>

namespace sorvane {
namespace {
QByteArrayView bytes(std::string_view line) {
    return {line.data(), static_cast<qsizetype>(line.size())};
}

// Where each word begins, and behind the last one where it ends.
std::vector<qsizetype> wordColumns(const QString& text) {
    std::vector<qsizetype> columns;
    bool isInWord = false;
    qsizetype end = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].isSpace()) {
            isInWord = false;
            continue;
        }
        if (!isInWord)
            columns.push_back(i + 1);
        isInWord = true;
        end = i + 1;
    }
    columns.push_back(end + 1);
    return columns;
}
} // namespace

QString WatchedLines::text() const {
    return !isPlain_ ? text_ : line_.data() == nullptr ? QString() : simplifiedText(bytes(line_));
}

bool WatchedLines::decode() {
    text_ = simplifiedText(bytes(line_));
    return !text_.isNull();
}

qsizetype WatchedLines::wordCount() const {
    if (!isPlain_)
        return text_.isEmpty() ? 0 : text_.count(u' ') + 1;
    return countWords(line_);
}

void WatchedLines::beginRecord() {
    wordFaults_.clear();
    faults_.clear();
    lineInRecord_ = 0;
}

const std::vector<LineFaults>& WatchedLines::faults() {
    if (!wordFaults_.empty())
        describeFaults();
    return faults_;
}

void WatchedLines::describeFaults() {
    const QString text = decodedText(bytes(line_));
    const std::vector<qsizetype> columns = wordColumns(text);
    LineFaults described;
    described.line = number_;
    described.lineInRecord = lineInRecord_;
    described.words = static_cast<qsizetype>(columns.size()) - 1;
    described.endColumn = columns.back();
    for (const WordFault& fault : wordFaults_) {
        if (fault.isMissing) {
            ++described.missingWords;
            continue;
        }
        const qsizetype column = columns[static_cast<std::size_t>(std::min(fault.place, described.words))];
        qsizetype end = column - 1;
        while (end < text.size() && !text[end].isSpace())
            ++end;
        described.malformed.push_back({column, text.mid(column - 1, end - column + 1), fault.kind});
    }
    wordFaults_.clear();
    faults_.push_back(std::move(described));
}
} // namespace sorvane
