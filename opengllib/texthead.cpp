// The first lines of a text as words, from which readers tell whether a file of any name could be theirs.
#include "texthead.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace sorvane {
namespace {
constexpr std::size_t kMaximumLines = 100;

constexpr bool isBlankCharacter(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

std::vector<std::string_view> wordsOf(std::string_view line) {
    std::vector<std::string_view> words;
    for (auto begin = std::ranges::find_if_not(line, isBlankCharacter); begin != line.end();) {
        const auto end = std::find_if(begin, line.end(), isBlankCharacter);
        words.emplace_back(begin, end);
        begin = std::find_if_not(end, line.end(), isBlankCharacter);
    }
    return words;
}

// Whether the whole word is a number of the type; a plus sign may stand before it.
template <class Number> bool isNumber(std::string_view word) {
    if (word.starts_with('+') && !word.starts_with("+-"))
        word.remove_prefix(1);
    Number number{};
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    return error == std::errc() && end == word.data() + word.size() && std::isfinite(static_cast<double>(number));
}

template <class Number> std::size_t leading(const std::vector<std::string_view>& words) {
    return static_cast<std::size_t>(std::ranges::find_if_not(words, isNumber<Number>) - words.begin());
}
} // namespace

TextHead::TextHead(std::string_view bytes, Comments comments) : bytes_(bytes) {
    for (std::string_view rest = bytes; !rest.empty() && lines_.size() < kMaximumLines;) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        if (comments == Comments::None || !line.starts_with('#'))
            lines_.push_back(wordsOf(line));
    }
}

std::string_view TextHead::word(std::size_t line, std::size_t place) const {
    return place < words(line) ? lines_[line][place] : std::string_view();
}

std::size_t TextHead::numbers(std::size_t line) const {
    return line < lineCount() ? leading<double>(lines_[line]) : 0;
}

std::size_t TextHead::integers(std::size_t line) const {
    return line < lineCount() ? leading<int>(lines_[line]) : 0;
}
} // namespace sorvane
