// What was brushed in a plot of a set: ranges of its columns.
#include "runbrush.h"

#include <algorithm>

#include "columntext.h"

namespace sorvane {
RunBrush RunBrush::over(const HistogramPlot& plot, const QString& name, const QRectF& area) {
    return RunBrush({{&plot.column(), name, area.left(), area.right()}});
}

RunBrush RunBrush::over(const ScatterPlot& plot, const QString& across, const QString& up, const QRectF& area) {
    return RunBrush({{&plot.across(), across, area.left(), area.right()}, {&plot.up(), up, area.top(), area.bottom()}});
}

std::vector<std::uint8_t> RunBrush::marks() const {
    std::vector<std::uint8_t> marks(ranges_.front().column->values.size());
    for (std::size_t row = 0; row < marks.size(); ++row)
        marks[row] = std::ranges::all_of(ranges_, [row](const Range& range) { return range.contains(row); }) ? 1 : 0;
    return marks;
}

QString RunBrush::condition() const {
    QStringList conditions;
    for (const Range& range : ranges_)
        conditions << rangeCondition(range.name, range.from, range.to, range.column->labels);
    return conditions.join(QLatin1String(" AND "));
}
} // namespace sorvane
