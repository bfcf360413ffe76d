// Puts a report together.
#include "reportpage.h"

#include <cmath>

#include <nlohmann/json.hpp>

#include <QString>

#include "distributioncharts.h"
#include "pagefiles.h"
#include "polarchart.h"
#include "shortestnumber.h"
#include "summarytext.h"

namespace sorvane {
namespace {
using Json = nlohmann::ordered_json;

std::string cell(const std::string& text) {
    return "<td>" + escaped(text) + "</td>";
}

std::string headingCells(const std::vector<std::string>& names) {
    std::string cells;
    for (const std::string& name : names)
        cells += "<th scope=\"col\">" + escaped(name) + "</th>";
    return "<thead><tr>" + cells + "</tr></thead>";
}

// A column's name that may go on in another line.
std::string breakable(const std::string& name) {
    std::string text;
    for (const char letter : escaped(name))
        text += letter == '_' ? std::string("_<wbr>") : std::string(1, letter);
    return text;
}

// A value with its interval behind it.
std::string withInterval(const std::string& text, const std::string& interval) {
    return escaped(text) + (interval.empty() ? "" : "<br><small>" + escaped(interval) + "</small>");
}

std::string shareCell(const Share& share) {
    const std::string interval = percentIntervalText(wilsonInterval(share));
    return "<td><span class=\"beside\">" + escaped(percentText(share.value())) + shareMark(share) + "</span>" +
           (interval.empty() ? "" : "<br><small>" + interval + "</small>") + "</td>";
}

std::string dataAddress(const char* type, const QByteArray& bytes) {
    return std::string("data:") + type + ";base64," + bytes.toBase64().toStdString();
}

std::string countOfRuns(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " run" : " runs");
}

class PageWriter {
public:
    explicit PageWriter(const ReportPage& page)
        : page_(page), set_(page.set), column_(set_.summary.column), range_(shownRangeOf(set_.summary.all.values)) {}

    std::string write() {
        html_ = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<meta name=\"viewport\" "
                "content=\"width=device-width, initial-scale=1\">\n<title>" +
                escaped(page_.title) + "</title>\n<style>\n" + kPageStyle + "</style>\n</head>\n<body>\n<main>\n";
        writeHeader();
        writeSummary();
        if (!set_.question.groupColumn.empty())
            writeGroups();
        writeDistribution();
        writeAspects();
        writeWorst();
        writeTable();
        writeCommands();
        return html_ + "</main>\n<script type=\"application/json\" id=\"data\">" + data() + "</script>\n<script>\n" +
               kPageScript + "</script>\n</body>\n</html>\n";
    }

private:
    const RowSummary& all() const { return set_.summary.all; }
    std::string text(double value) const { return columnValueText(column_, value); }
    std::string roundText(double value) const { return roundValueText(column_, value); }
    std::string medianInterval(const RowSummary& rows) const { return columnIntervalText(column_, rows.median); }

    void tile(const char* name, const std::string& value, const std::string& below) {
        html_ += "<div class=\"tile\"><span>" + escaped(name) + "</span><b>" + escaped(value) + "</b><span>" +
                 escaped(below) + "</span></div>\n";
    }

    void writeHeader() {
        html_ += "<header><h1>" + escaped(page_.title) + "</h1>\n<p class=\"muted\">" +
                 countOfRuns(static_cast<std::size_t>(all().rows)) + " of " + escaped(set_.path);
        if (!set_.question.condition.empty())
            html_ += " where <code>" + escaped(set_.question.condition) + "</code>";
        html_ += "</p></header>\n<div class=\"tiles\">\n";
        const std::string leftOut = leftOutText(all(), column_);
        tile("runs that count", std::to_string(all().values.size()), leftOut.empty() ? "none left out" : leftOut);
        tile("median", text(medianOf(all().values)), "95 %: " + medianInterval(all()));
        const std::vector<double>& distances = set_.question.distances;
        if (!distances.empty()) {
            const std::size_t middle = distances.size() / 2;
            tile(
                ("within " + roundText(distances[middle])).c_str(), percentText(all().within[middle].value()),
                "95 %: " + percentIntervalText(wilsonInterval(all().within[middle])));
        }
        if (all().decoyed.of > 0)
            tile(
                "decoyed", percentText(all().decoyed.value()),
                "95 %: " + percentIntervalText(wilsonInterval(all().decoyed)));
        html_ += "</div>\n";
    }

    void writeSummary() {
        html_ += "<section><h2>Summary</h2><div class=\"pair\"><table><thead><tr><th scope=\"col\">" +
                 escaped(columnTitle(column_)) + "</th><th></th></tr></thead><tbody>\n";
        const auto row = [this](const std::string& name, const std::string& value) {
            html_ += "<tr><td>" + name + "</td><td>" + value + "</td></tr>\n";
        };
        const std::vector<double>& values = all().values;
        row("mean", escaped(text(all().mean)));
        row("standard deviation", escaped(text(all().deviation)));
        row("least", escaped(text(values.front())));
        row("5 % are below", escaped(text(quantileOf(values, 0.05))));
        row("25 % are below", escaped(text(quantileOf(values, 0.25))));
        row("median", withInterval(text(medianOf(values)), medianInterval(all())));
        row("75 % are below", escaped(text(quantileOf(values, 0.75))));
        row("95 % are below", escaped(text(quantileOf(values, 0.95))));
        row("greatest", escaped(text(values.back())));
        html_ += "</tbody></table>\n<figure>";
        std::vector<NamedShare> shares;
        for (std::size_t i = 0; i < all().within.size(); ++i)
            shares.push_back({"within " + roundText(set_.question.distances[i]), all().within[i]});
        shares.push_back({"decoyed", all().decoyed});
        html_ += sharesChart(shares) +
                 "<figcaption>Shares of the runs with 95 % intervals (Wilson). The median's interval is "
                 "of " +
                 std::to_string(kBootstrapResamples / 1000) + ",000 resamples.</figcaption></figure></div></section>\n";
    }

    void writeGroups() {
        html_ +=
            "<section><h2>By " + escaped(columnTitle(set_.question.groupColumn)) + "</h2><div class=\"scroll\"><table>";
        std::vector<std::string> names{columnTitle(set_.question.groupColumn), "runs", "left out", "median"};
        for (const double distance : set_.question.distances)
            names.push_back("within " + roundText(distance));
        names.emplace_back("decoyed");
        html_ += headingCells(names) + "<tbody>\n";
        for (const RowSummary& group : set_.summary.groups) {
            html_ += "<tr>" + cell(groupText(group.group)) + cell(std::to_string(group.rows)) +
                     cell(std::to_string(group.faulty + group.undefined)) + "<td>" +
                     withInterval(text(medianOf(group.values)), medianInterval(group)) + "</td>";
            for (const Share& share : group.within)
                html_ += shareCell(share);
            html_ += shareCell(group.decoyed) + "</tr>\n";
        }
        html_ += "</tbody></table></div></section>\n";
    }

    void writeDistribution() {
        const std::string title = columnTitle(column_);
        html_ += "<section><h2>Distribution</h2><div class=\"pair\"><figure>" + histogramOf(set_, range_) +
                 "<figcaption>Number of runs by " + escaped(title) + ", in steps of " +
                 escaped(roundText(range_.step)) + decoyedKey(set_.runs) +
                 ". A click on a bar lists its runs below.</figcaption></figure><figure>" +
                 cumulativeCurveOf(set_, range_) + "<figcaption>Share of the runs up to a " + escaped(title) +
                 ". The band holds the whole curve of the distribution with 95 % (Dvoretzky, Kiefer, "
                 "Wolfowitz).</figcaption></figure></div>";
        if (range_.beyond > 0)
            html_ += "<p class=\"note\">" + countOfRuns(static_cast<std::size_t>(range_.beyond)) + " beyond " +
                     escaped(roundText(range_.to)) + ", up to " + escaped(text(all().values.back())) +
                     (range_.beyond == 1 ? ", is" : ", are") + " not drawn.</p>";
        html_ += "</section>\n";
    }

    void writeAspects() {
        const std::vector<AspectSector> sectors = aspectSectorsOf(set_);
        if (sectors.empty())
            return;
        const ShownRange range = polarRangeOf(all().values);
        html_ += "<section><h2>By " + escaped(columnTitle(set_.aspectColumn)) +
                 "</h2><div class=\"pair\"><figure class=\"polar\">" + polarChart(set_, range, sectors) +
                 "<figcaption>" + escaped(columnTitle(column_)) +
                 " from the middle outwards, the target's nose up; a bow is a sector's median. " +
                 decoyedKey(set_.runs) + '.';
        if (range.beyond > 0)
            html_ += " " + countOfRuns(static_cast<std::size_t>(range.beyond)) + " beyond " +
                     escaped(roundText(range.to)) + (range.beyond == 1 ? " lies" : " lie") + " on the rim.";
        if (set_.runs.size() > kMostPolarRuns)
            html_ += " Of " + countOfRuns(set_.runs.size()) + " some are drawn, evenly chosen.";
        html_ += "</figcaption></figure><table>" + headingCells({"from", "runs", "median", "decoyed"}) + "<tbody>\n";
        for (const AspectSector& sector : sectors)
            html_ += "<tr>" + cell(shortestText(sector.fromDegrees) + "° to " + shortestText(sector.toDegrees) + "°") +
                     cell(std::to_string(sector.values.size())) + cell(text(medianOf(sector.values))) +
                     shareCell(sector.decoyed) + "</tr>\n";
        html_ += "</tbody></table></div></section>\n";
    }

    std::string factsOf(const ReportRun& run) const {
        std::string facts = columnTitle(column_) + " " + text(run.value);
        if (!std::isnan(run.timeSeconds))
            facts += " at " + columnValueText("time_s", run.timeSeconds);
        if (!std::isnan(run.aspectDegrees))
            facts +=
                ", " + columnTitle(set_.aspectColumn) + " " + columnValueText(set_.aspectColumn, run.aspectDegrees);
        if (!std::isnan(run.decoyed))
            facts += run.decoyed != 0.0 ? ", decoyed" : ", not decoyed";
        return facts + (run.group.empty() ? "" : ", " + columnTitle(set_.question.groupColumn) + " " + run.group);
    }

    void writeWorst() {
        if (page_.worst.runs.empty())
            return;
        html_ += "<section class=\"long\"><h2>Worst " + std::to_string(page_.worst.runs.size()) + ": " +
                 (page_.worstRequest.isGreatest ? "greatest " : "least ") + escaped(columnTitle(column_)) + "</h2>\n";
        std::size_t number = 0;
        for (const WorstRun& worst : page_.worst.runs) {
            html_ += "<div class=\"run\"><h3><span>" + std::to_string(++number) + "</span>" + escaped(worst.run.path) +
                     "</h3><p class=\"facts muted\">" + escaped(factsOf(worst.run)) + "</p>";
            if (!worst.problem.empty())
                html_ += "<p class=\"none\">" + escaped(worst.problem) + "</p>";
            html_ += "<div class=\"pair\">";
            const std::string name = escaped(worst.run.path);
            if (!worst.picture.isEmpty())
                html_ +=
                    "<img alt=\"The scene of " + name + "\" src=\"" + dataAddress("image/png", worst.picture) + "\">";
            if (!worst.plot.isEmpty())
                html_ += "<picture><source media=\"screen and (prefers-color-scheme: dark)\" srcset=\"" +
                         dataAddress("image/svg+xml", worst.darkPlot) + "\"><img alt=\"Measures of " + name +
                         " over time\" src=\"" + dataAddress("image/svg+xml", worst.plot) + "\"></picture>";
            html_ += "</div><details><summary>Commands</summary><pre>" + escaped(worst.renderCommand) + '\n' +
                     escaped(worst.plotCommand) + "</pre></details></div>\n";
        }
        html_ += "</section>\n";
    }

    void writeTable() {
        html_ += "<section class=\"long\"><h2>Runs</h2><div class=\"tools\"><label>Filter <input id=\"filter\" "
                 "type=\"search\" placeholder=\"" +
                 escaped(column_) +
                 "&lt;5 decoyed=1 or a word\" autocomplete=\"off\"></label><span id=\"count\" role=\"status\"></span>"
                 "<span><button type=\"button\" id=\"previous\">Previous</button> <button type=\"button\" "
                 "id=\"next\">Next</button></span></div>\n<div class=\"scroll\"><table class=\"runs\"><thead><tr>";
        for (const ReportColumn& column : set_.columns)
            html_ += std::string("<th scope=\"col\"") + (column.isText() ? " class=\"text\"" : "") +
                     "><button type=\"button\">" + breakable(column.name) + "</button></th>";
        html_ +=
            "</tr></thead><tbody></tbody></table></div>\n<noscript><p class=\"note\">The table needs scripts to be "
            "allowed.</p></noscript></section>\n";
    }

    void writeCommands() {
        html_ +=
            "<section><h2>Commands</h2><p class=\"note\">What made this page, and what prints its numbers.</p><pre>";
        for (const std::string& command : page_.commands)
            html_ += escaped(command) + '\n';
        html_ += "</pre></section>\n";
    }

    // The table's columns, each with the values of all rows; with the digits that people read.
    std::string data() const {
        constexpr int kDigits = 7;
        Json columns = Json::array();
        for (const ReportColumn& column : set_.columns) {
            Json values = Json::array();
            const bool isText = column.isText();
            for (const RunValue& value : column.values) {
                if (const auto* const number = std::get_if<double>(&value); number != nullptr && !isText)
                    values.push_back(QString::number(*number, 'g', kDigits).toDouble());
                else if (const auto* const integer = std::get_if<std::int64_t>(&value); integer != nullptr && !isText)
                    values.push_back(*integer);
                else if (value == RunValue())
                    values.push_back(nullptr);
                else
                    values.push_back(groupText(value));
            }
            columns.push_back({{"name", column.name}, {"isText", isText}, {"values", std::move(values)}});
        }
        const Json all{
            {"column", column_}, {"isLeastWorst", !page_.worstRequest.isGreatest}, {"columns", std::move(columns)}};
        std::string text = all.dump(-1, ' ', false, Json::error_handler_t::replace);
        // No text ends the element that holds it.
        for (std::size_t place = text.find('<'); place != std::string::npos; place = text.find('<', place))
            text.replace(place, 1, "\\u003c");
        return text;
    }

    const ReportPage& page_;
    const ReportSet& set_;
    const std::string& column_;
    ShownRange range_;
    std::string html_;
};
} // namespace

std::string htmlOf(const ReportPage& page) {
    return PageWriter(page).write();
}
} // namespace sorvane
