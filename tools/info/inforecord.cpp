// What `sorvane info` knows about a file, and how its parts are named and put in.
#include "inforecord.h"

#include <QString>

#include "shortestnumber.h"

InfoRecord numberList(std::span<const float> values) {
    InfoRecord list = InfoRecord::array();
    for (const float value : values)
        list.push_back(shortestDouble(value));
    return list;
}

std::string fixedText(std::span<const char> field) {
    std::string_view text(field.data(), field.size());
    text = text.substr(0, text.find('\0'));
    const std::size_t last = text.find_last_not_of(' ');
    return std::string(text.substr(0, last == std::string_view::npos ? 0 : last + 1));
}

std::string lengthName(const char* stem, LengthUnit unit) {
    return stem + lengthNameEnding(unit).toStdString();
}

std::string speedName(const char* stem, LengthUnit unit) {
    return stem + speedNameEnding(unit).toStdString();
}
