// The columns of measures in tables.
#include "measurecolumns.h"

#include <cmath>
#include <sstream>

#include "shortestnumber.h"
#include "withoutnoise.h"

namespace sorvane {
namespace {
bool fits(const Measure& measure, bool isOfFlares) {
    return measure.isOfMoments() || (isOfFlares && measure.isOfFlareMoments());
}

Problem misfit(const Measure& measure) {
    return std::string(measure.name) +
           (measure.isOfFlareMoments() ? " is a measure of flares: give --flares" : " is no curve: see sorvane info");
}
} // namespace

Outcome<std::vector<const Measure*>> chooseMeasures(const std::string& list, bool isOfFlares) {
    std::vector<const Measure*> chosen;
    if (list == "all") {
        for (const Measure& measure : allMeasures())
            if (fits(measure, isOfFlares))
                chosen.push_back(&measure);
        return chosen;
    }
    std::istringstream names(list);
    for (std::string name; std::getline(names, name, ',');) {
        const Measure* const measure = findMeasure(name);
        if (measure == nullptr)
            return Problem("there is no measure " + name + ": see sorvane measures");
        if (!fits(*measure, isOfFlares))
            return misfit(*measure);
        chosen.push_back(measure);
    }
    return chosen;
}

MeasureColumn::MeasureColumn(const MeasuredEngagement& engagement, const Measure& measure, Rows rows)
    : engagement_(&engagement), measure_(&measure),
      values_(measure.isOfFlareMoments() ? valuesOnAllRows(engagement, measure) : valuesOnSamples(engagement, measure)),
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
        appendShortest(text, withoutNoise(value, std::abs(value)));
}
} // namespace sorvane
