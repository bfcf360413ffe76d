// A cursor over the blank-separated words of a simplified line.
#pragma once

#include <QString>

#include "wordconversion.h"

namespace sorvane {
// Each next…() takes one word; a missing or malformed one gives 0.
template <Conversion<QStringView> Converter> class BasicTextWords {
public:
    explicit BasicTextWords(const QString& simplifiedLine, Converter conversion = {})
        : conversion_(conversion), line_(simplifiedLine) {}

    bool atEnd() const { return at_ >= line_.size(); }
    void skip() { nextWord(); }
    int nextInt() { return conversion_.toInt(nextWord()).value_or(0); }
    double nextReal() { return nextRealOr(0.0); }
    double nextRealOr(double replacement) { return conversion_.toReal(nextWord()).value_or(replacement); }
    double nextDouble() { return conversion_.toDouble(nextWord()).value_or(0.0); }

private:
    QStringView nextWord() {
        if (atEnd())
            return QStringView(line_).sliced(line_.size());
        const qsizetype blank = line_.indexOf(u' ', at_);
        const qsizetype end = blank < 0 ? line_.size() : blank;
        const QStringView word = QStringView(line_).mid(at_, end - at_);
        at_ = end + 1;
        return word;
    }

    [[no_unique_address]] Converter conversion_;
    QString line_;
    qsizetype at_ = 0;
};

using TextWords = BasicTextWords<SilentConversion>;
} // namespace sorvane
