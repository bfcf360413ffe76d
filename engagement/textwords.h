// A cursor over the blank-separated words of a simplified line.
#pragma once

#include <QString>

#include "wordconversion.h"

// Each next…() takes one word; a missing or malformed one gives 0.
class TextWords {
public:
    explicit TextWords(const QString& simplifiedLine) : line_(simplifiedLine) {}

    bool atEnd() const { return at_ >= line_.size(); }
    void skip() { nextWord(); }
    int nextInt() { return toInt(nextWord()).value_or(0); }
    float nextFloat() { return nextFloatOr(0.0F); }
    float nextFloatOr(float replacement) { return toFloat(nextWord()).value_or(replacement); }
    double nextDouble() { return toDouble(nextWord()).value_or(0.0); }

private:
    QStringView nextWord() {
        if (atEnd())
            return {};
        const qsizetype blank = line_.indexOf(u' ', at_);
        const qsizetype end = blank < 0 ? line_.size() : blank;
        const QStringView word = QStringView(line_).mid(at_, end - at_);
        at_ = end + 1;
        return word;
    }

    QString line_;
    qsizetype at_ = 0;
};
