// The numbers of a trajectory file as words of its lines.
#pragma once

#include <cmath>
#include <concepts>
#include <limits>
#include <optional>
#include <string_view>

#include <QStringView>

namespace sorvane {
// A word that is not wholly a number of its type, or is not finite, is malformed: nothing. Independent of the locale.
std::optional<int> toInt(QStringView word);
std::optional<double> toDouble(QStringView word);
// A number that is kept in single precision for drawing: one that is too large or too small for that is malformed, too.
// Rounded to single precision it is what QString's conversion gives, which goes by way of double.
std::optional<double> toReal(QStringView word);

// The same of a word in plain ASCII.
std::optional<int> toInt(std::string_view word);
std::optional<double> toDouble(std::string_view word);
std::optional<double> toReal(std::string_view word);

inline bool fitsSinglePrecision(double number) {
    return std::abs(number) <= double{std::numeric_limits<float>::max()} &&
           (number == 0.0 || static_cast<float>(number) != 0.0F);
}

// Makes numbers of words, of which an empty one is missing: nothing for a missing or malformed one. A cursor over words
// has its words converted by one, which may remember what it could not convert.
template <class C, class Word>
concept Conversion = std::copyable<C> && requires(const C conversion, Word word) {
    { conversion.toInt(word) } -> std::same_as<std::optional<int>>;
    { conversion.toReal(word) } -> std::same_as<std::optional<double>>;
    { conversion.toDouble(word) } -> std::same_as<std::optional<double>>;
};

// Nobody hears of a missing or malformed word.
struct SilentConversion {
    template <class Word> static std::optional<int> toInt(Word word) { return sorvane::toInt(word); }
    template <class Word> static std::optional<double> toReal(Word word) { return sorvane::toReal(word); }
    template <class Word> static std::optional<double> toDouble(Word word) { return sorvane::toDouble(word); }
};

// Notes in a flag, which must outlive it, that there was one.
class NotingConversion {
public:
    explicit NotingConversion(bool& isAllConverted) : isAllConverted_(&isAllConverted) {}

    template <class Word> std::optional<int> toInt(Word word) const { return noted(sorvane::toInt(word)); }
    template <class Word> std::optional<double> toReal(Word word) const { return noted(sorvane::toReal(word)); }
    template <class Word> std::optional<double> toDouble(Word word) const { return noted(sorvane::toDouble(word)); }

private:
    template <class Number> std::optional<Number> noted(std::optional<Number> number) const {
        *isAllConverted_ = *isAllConverted_ && number;
        return number;
    }

    bool* isAllConverted_;
};
} // namespace sorvane
