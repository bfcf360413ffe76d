// The columns of measures in tables.
#include "measurecolumns.h"

#include <cmath>

#include "shortestnumber.h"
#include "writtenvalues.h"

namespace sorvane {
MeasureColumn::MeasureColumn(const MeasuredEngagement& engagement, const Measure& measure, Rows rows)
    : engagement_(&engagement), measure_(&measure),
      values_(
          measure.isOfFlareMoments() ? writtenOnAllRows(engagement, measure) : writtenOnSamples(engagement, measure)),
      isBySample_(rows == Rows::Flares && measure.isOfMoments()) {}

std::string MeasureColumn::name() const {
    return columnName(*measure_, engagement_->unit()).toStdString();
}

void MeasureColumn::append(std::string& text, std::size_t row) const {
    const double value = values_[isBySample_ ? engagement_->tracks().sampleOf(row) : row];
    if (std::isnan(value))
        return;
    if (measure_->unit == MeasureUnit::Object)
        text += objectName(engagement_->tracks(), value).toStdString();
    else
        appendShortest(text, value);
}
} // namespace sorvane
