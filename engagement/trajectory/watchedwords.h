// Cursors over the words of a line that remember which of them were missing or malformed, and otherwise give what the
// viewer's cursors give.
#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include <QString>

#include "plainwords.h"
#include "textwords.h"
#include "wordconversion.h"

namespace sorvane {
enum class NumberKind { Integer, Real };

// A word that was read as no number.
struct WordFault {
    qsizetype place = 0; // among the line's words, from 0
    NumberKind kind = NumberKind::Real;
    bool isMissing = false;
};

// The words of a line, or of its part before one of them.
inline qsizetype countWords(std::string_view part) {
    qsizetype words = 0;
    bool wasBlank = true;
    for (const char c : part) {
        const bool isBlank = sorvane::isPlainBlank(c);
        words += wasBlank && !isBlank ? 1 : 0;
        wasBlank = isBlank;
    }
    return words;
}
// Of the part of a simplified line.
inline qsizetype countWords(QStringView part) {
    return part.count(u' ');
}

// Converts the words of a line and remembers those that are none.
template <class Word> class WatchedConversion {
public:
    WatchedConversion(Word line, std::vector<WordFault>& faults) : line_(line), faults_(&faults) {}

    std::optional<int> toInt(Word word) const { return watched(sorvane::toInt(word), word, NumberKind::Integer); }
    std::optional<double> toReal(Word word) const { return watched(sorvane::toReal(word), word, NumberKind::Real); }
    std::optional<double> toDouble(Word word) const { return watched(sorvane::toDouble(word), word, NumberKind::Real); }

private:
    template <class Number>
    std::optional<Number> watched(std::optional<Number> number, Word word, NumberKind kind) const {
        if (!number)
            faults_->push_back({countWords(Word(line_.data(), word.data())), kind, word.empty()});
        return number;
    }

    Word line_;
    std::vector<WordFault>* faults_;
};

using WatchedPlainWords = BasicPlainWords<WatchedConversion<std::string_view>>;
using WatchedTextWords = BasicTextWords<WatchedConversion<QStringView>>;
} // namespace sorvane
