// Writes a description as text for people.
#include "infotext.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <QString>

namespace sorvane {
namespace {
constexpr std::size_t kIndentation = 2;
constexpr std::size_t kGap = 2; // between columns

struct Cell {
    std::string name;
    std::string text;
};

std::string readable(std::string name) {
    std::ranges::replace(name, '_', ' ');
    return name;
}

Cell numberCell(const std::string& name, double value) {
    const NamedMeasure measure = namedMeasure(QString::fromStdString(name), value);
    return {readable(measure.name.toStdString()), measure.text.toStdString()};
}

Cell cellOf(const std::string& name, const InfoRecord& value) {
    if (value.is_string()) {
        const auto text = value.get<std::string>();
        return {readable(name), text.empty() ? "-" : harmless(text)};
    }
    if (value.is_boolean())
        return {readable(name), value.get<bool>() ? "yes" : "no"};
    if (value.is_number_integer())
        return {readable(name), value.dump()};
    if (value.is_number_float())
        return numberCell(name, value.get<double>());
    if (!value.is_array())
        return {readable(name), "-"};
    Cell list{readable(name), ""};
    for (const InfoRecord& element : value) {
        const Cell cell = cellOf(name, element);
        list.name = cell.name;
        list.text += list.text.empty() ? cell.text : ", " + cell.text;
    }
    return list;
}

std::size_t shownLength(const std::string& text) {
    return static_cast<std::size_t>(QString::fromStdString(text).size());
}

std::string padded(const std::string& text, std::size_t width) {
    const std::size_t length = shownLength(text);
    return text + std::string(width > length ? width - length : 0, ' ');
}

bool isTable(const InfoRecord& value) {
    return value.is_array() && !value.empty() && value.front().is_object();
}

void writeTable(const InfoRecord& rows, std::size_t indentation, std::ostream& out) {
    std::vector<std::vector<std::string>> lines(1);
    for (const auto& [name, value] : rows.front().items())
        lines.front().push_back(cellOf(name, value).name);
    for (const InfoRecord& row : rows) {
        std::vector<std::string> line;
        for (const auto& [name, value] : row.items())
            line.push_back(cellOf(name, value).text);
        lines.push_back(std::move(line));
    }
    std::vector<std::size_t> widths(lines.front().size());
    for (const auto& line : lines)
        for (std::size_t column = 0; column < std::min(line.size(), widths.size()); ++column)
            widths[column] = std::max(widths[column], shownLength(line[column]));
    for (const auto& line : lines) {
        std::string text(indentation, ' ');
        for (std::size_t column = 0; column < std::min(line.size(), widths.size()); ++column)
            text += padded(line[column], widths[column] + kGap);
        out << text.substr(0, text.find_last_not_of(' ') + 1) << '\n';
    }
}

void writeMembers(const InfoRecord& record, std::size_t indentation, std::ostream& out) {
    std::size_t width = 0;
    for (const auto& [name, value] : record.items())
        if (!value.is_object() && !isTable(value))
            width = std::max(width, shownLength(cellOf(name, value).name));
    const std::string margin(indentation, ' ');
    for (const auto& [name, value] : record.items()) {
        if (value.is_object()) {
            out << margin << readable(name) << '\n';
            writeMembers(value, indentation + kIndentation, out);
        } else if (isTable(value)) {
            out << margin << readable(name) << '\n';
            writeTable(value, indentation + kIndentation, out);
        } else {
            const Cell cell = cellOf(name, value);
            out << margin << padded(cell.name, width + kGap) << cell.text << '\n';
        }
    }
}
} // namespace

std::string harmless(std::string text) {
    std::ranges::replace_if(
        text, [](unsigned char c) { return c < ' ' || c == 0x7F; }, '?');
    return text;
}

void writeInfoText(const InfoRecord& record, std::ostream& out) {
    InfoRecord members = record;
    const std::string path = members.at("path").get<std::string>();
    members.erase("path");
    out << harmless(path) << '\n';
    writeMembers(members, kIndentation, out);
}
} // namespace sorvane
