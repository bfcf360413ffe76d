// Text as roff takes it.
#include "roff.h"

#include <cstdint>
#include <cstdio>
#include <sstream>

#include <QList>
#include <QString>

namespace sorvane {
namespace {
std::string escaped(char32_t character, bool isLiteral) {
    switch (character) {
    case U'\\':
        return "\\e";
    case U'\'':
        return "\\(aq";
    case U'`':
        return "\\(ga";
    case U'^':
        return "\\(ha";
    case U'~':
        return "\\(ti";
    case U'"':
        return "\\(dq";
    case U'-':
        return isLiteral ? "\\-" : "-";
    default:
        break;
    }
    if (character < 0x80)
        return std::string(1, static_cast<char>(character));
    char name[16];
    std::snprintf(name, sizeof name, "\\[u%04X]", static_cast<unsigned>(character));
    return name;
}

std::string escapedText(const std::string& text, bool isLiteral) {
    std::string result;
    for (const std::uint32_t character : QString::fromStdString(text).toUcs4())
        result += escaped(character, isLiteral);
    return result;
}
} // namespace

std::string roffText(const std::string& text) {
    return escapedText(text, false);
}

std::string roffLiteral(const std::string& text) {
    return escapedText(text, true);
}

std::string roffFilled(const std::string& escaped) {
    constexpr std::size_t kWidth = 78;
    std::string filled;
    std::string line;
    const auto endLine = [&] {
        // At a line's begin a dot would make a request; the accent is escaped everywhere.
        if (line.starts_with('.'))
            line.insert(0, "\\&");
        filled += line + '\n';
        line.clear();
    };
    std::istringstream words(escaped);
    for (std::string word; words >> word;) {
        if (!line.empty() && line.size() + 1 + word.size() > kWidth)
            endLine();
        line += (line.empty() ? "" : " ") + word;
        if (word.ends_with('.'))
            endLine();
    }
    if (!line.empty())
        endLine();
    return filled;
}
} // namespace sorvane
