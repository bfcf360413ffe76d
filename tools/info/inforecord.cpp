// What `sorvane info` knows about a file, and how its parts are named and put in.
#include "inforecord.h"

#include <QString>

#include "shortestnumber.h"

namespace sorvane {
InfoRecord numberList(std::span<const float> values) {
    InfoRecord list = InfoRecord::array();
    for (const float value : values)
        list.push_back(shortestDouble(value));
    return list;
}

InfoRecord numberList(std::span<const double> values) {
    InfoRecord list = InfoRecord::array();
    for (const double value : values)
        list.push_back(value);
    return list;
}

std::string lengthName(const char* stem, LengthUnit unit) {
    return stem + lengthNameEnding(unit).toStdString();
}

std::string speedName(const char* stem, LengthUnit unit) {
    return stem + speedNameEnding(unit).toStdString();
}
} // namespace sorvane
