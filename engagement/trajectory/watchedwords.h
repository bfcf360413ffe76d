// Cursors over the words of a line that remember which of them were missing or malformed, and otherwise give what the
// viewer's cursors give.
#pragma once

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include <QString>

#include "plainwords.h"
#include "textwords.h"
#include "wordconversion.h"

enum class NumberKind { Integer, Real };

// A word that was read as no number.
struct WordFault {
    qsizetype place = 0; // among the line's words, from 0
    NumberKind kind = NumberKind::Real;
    bool isMissing = false;
};

class WatchedPlainConversion {
public:
    WatchedPlainConversion(std::string_view line, std::vector<WordFault>& faults) : line_(line), faults_(&faults) {}

    int toInt(std::string_view word) const { return valueOf(::toInt(text(word)), word, NumberKind::Integer); }
    float toFloat(std::string_view word) const { return valueOf(::toFloat(text(word)), word, NumberKind::Real); }
    double toDouble(std::string_view word) const { return valueOf(::toDouble(text(word)), word, NumberKind::Real); }

private:
    static QString text(std::string_view word) {
        return QString::fromLatin1(word.data(), static_cast<qsizetype>(word.size()));
    }

    template <class Number> Number valueOf(std::optional<Number> number, std::string_view word, NumberKind kind) const {
        if (!number)
            faults_->push_back({wordsBefore(word.data()), kind, word.empty()});
        return number.value_or(Number{});
    }

    qsizetype wordsBefore(const char* word) const {
        qsizetype words = 0;
        for (const char* at = line_.data(); at != word; ++at)
            words += !isPlainBlank(*at) && isPlainWordEnd(at + 1, line_.data() + line_.size()) ? 1 : 0;
        return words;
    }

    std::string_view line_;
    std::vector<WordFault>* faults_;
};

class WatchedTextConversion {
public:
    WatchedTextConversion(const QString& simplifiedLine, std::vector<WordFault>& faults)
        : line_(simplifiedLine), faults_(&faults) {}

    std::optional<int> toInt(QStringView word) const { return watched(::toInt(word), word, NumberKind::Integer); }
    std::optional<float> toFloat(QStringView word) const { return watched(::toFloat(word), word, NumberKind::Real); }
    std::optional<double> toDouble(QStringView word) const { return watched(::toDouble(word), word, NumberKind::Real); }

private:
    template <class Number>
    std::optional<Number> watched(std::optional<Number> number, QStringView word, NumberKind kind) const {
        if (!number)
            faults_->push_back({line_.first(word.data() - line_.data()).count(u' '), kind, word.isEmpty()});
        return number;
    }

    QStringView line_;
    std::vector<WordFault>* faults_;
};

using WatchedPlainWords = BasicPlainWords<WatchedPlainConversion>;
using WatchedTextWords = BasicTextWords<WatchedTextConversion>;
