// The statistics of a set as text for people.
#include <algorithm>
#include <cmath>
#include <vector>

#include <QString>

#include "shortestnumber.h"
#include "statsreport.h"
#include "summarytext.h"

namespace sorvane {
namespace {
// Cells under one another, the first column to the left, numbers to the right.
class TextTable {
public:
    void add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

    void write(std::ostream& out) const {
        std::vector<qsizetype> widths;
        for (const auto& row : rows_)
            for (std::size_t i = 0; i < row.size(); ++i) {
                widths.resize(std::max(widths.size(), i + 1));
                widths[i] = std::max(widths[i], QString::fromStdString(row[i]).size());
            }
        for (const auto& row : rows_) {
            QString line;
            for (std::size_t i = 0; i < row.size(); ++i) {
                const QString cell = QString::fromStdString(row[i]);
                line +=
                    QStringLiteral("  ") + (i == 0 ? cell.leftJustified(widths[i]) : cell.rightJustified(widths[i]));
            }
            while (line.endsWith(u' '))
                line.chop(1);
            out << line.toStdString() << '\n';
        }
    }

private:
    std::vector<std::vector<std::string>> rows_;
};

std::string quantileName(double share) {
    constexpr double kPercent = 100.0;
    if (share == 0.0)
        return "least";
    if (share == 0.5)
        return "median";
    return share == 1.0 ? "greatest" : shortestText(share * kPercent) + " %";
}

std::string withinName(const std::string& column, double distance) {
    return "within " + roundValueText(column, distance);
}

std::vector<std::string> shareCells(const std::string& name, const Share& share) {
    return {name, percentText(share.value()), percentIntervalText(wilsonInterval(share)), countText(share)};
}

void writeHeading(const AskedSet& set, std::ostream& out) {
    const RowSummary& all = set.summary.all;
    const std::string leftOut = leftOutText(all, set.summary.column);
    out << set.path << ": " << all.rows << (all.rows == 1 ? " run" : " runs") << (leftOut.empty() ? "" : ", ")
        << leftOut << '\n';
    if (!set.question.condition.empty())
        out << "where " << set.question.condition << '\n';
}

void writeSet(const AskedSet& set, std::ostream& out) {
    const std::string& column = set.summary.column;
    const RowSummary& all = set.summary.all;
    writeHeading(set, out);
    TextTable table;
    table.add({columnTitle(column), "", "95 % interval"});
    table.add({"mean", columnValueText(column, all.mean)});
    table.add({"standard deviation", columnValueText(column, all.deviation)});
    for (const double share : kWrittenQuantiles)
        table.add(
            {quantileName(share), columnValueText(column, quantileOf(all.values, share)),
             share == 0.5 ? columnIntervalText(column, all.median) : ""});
    for (std::size_t i = 0; i < all.within.size(); ++i)
        table.add(shareCells(withinName(column, set.question.distances[i]), all.within[i]));
    table.add(shareCells("decoyed", all.decoyed));
    table.write(out);
}

std::string shareCell(const Share& share) {
    const std::string interval = percentIntervalText(wilsonInterval(share));
    return percentText(share.value()) + (interval.empty() ? "" : " (" + interval + ")");
}

void writeGroups(const AskedSet& set, std::ostream& out) {
    const std::string& column = set.summary.column;
    TextTable table;
    std::vector<std::string> heading{set.question.groupColumn, "runs", "left out", "median", "95 % interval"};
    for (const double distance : set.question.distances)
        heading.push_back(withinName(column, distance));
    heading.emplace_back("decoyed");
    table.add(heading);
    for (const RowSummary& group : set.summary.groups) {
        std::vector<std::string> cells{
            groupText(group.group), std::to_string(group.rows), std::to_string(group.faulty + group.undefined),
            columnValueText(column, medianOf(group.values)), columnIntervalText(column, group.median)};
        for (const Share& share : group.within)
            cells.push_back(shareCell(share));
        cells.push_back(shareCell(group.decoyed));
        table.add(cells);
    }
    out << '\n';
    table.write(out);
}

void writeDifference(const StatsReport& report, const SetDifference& difference, std::ostream& out) {
    const std::string& column = report.set.summary.column;
    const auto signedText = [](double value, const std::string& text) {
        return value > 0.0 ? "+" + text : text;
    };
    out << "the first less the second\n";
    TextTable table;
    table.add({"", "", "95 % interval"});
    table.add(
        {"median", signedText(difference.median, columnValueText(column, difference.median)),
         columnIntervalText(column, difference.medianInterval)});
    const auto addShare = [&](const std::string& name, const ShareDifference& share) {
        table.add({name, signedText(share.value, percentText(share.value)), percentIntervalText(share.interval)});
    };
    for (std::size_t i = 0; i < difference.within.size(); ++i)
        addShare(withinName(column, report.set.question.distances[i]), difference.within[i]);
    addShare("decoyed", difference.decoyed);
    table.write(out);
    const KolmogorovSmirnov& curves = difference.kolmogorovSmirnov;
    const MannWhitney& ranks = difference.mannWhitney;
    out << "  Kolmogorov-Smirnov: distance " << QString::number(curves.distance, 'f', 3).toStdString() << ", p "
        << chanceText(curves.p) << (curves.isExact ? "" : " (large samples)") << '\n'
        << "  Mann-Whitney: the first is greater in " << percentText(ranks.greater) << " of pairs, p "
        << chanceText(ranks.p) << (ranks.isExact ? "" : " (large samples)") << '\n';
}
} // namespace

void writeText(const StatsReport& report, std::ostream& out) {
    writeSet(report.set, out);
    if (!report.set.question.groupColumn.empty())
        writeGroups(report.set, out);
    if (report.other) {
        out << '\n';
        writeSet(*report.other, out);
    }
    if (report.difference) {
        out << '\n';
        writeDifference(report, *report.difference, out);
    }
}
} // namespace sorvane
