// Measures by their names, as the command line has them.
#include "measurelist.h"

#include <sstream>

namespace sorvane {
namespace {
bool fits(const Measure& measure, bool withFlares) {
    return measure.isOfMoments() || (withFlares && measure.isOfFlareMoments());
}

Problem misfit(const Measure& measure) {
    return std::string(measure.name) +
           (measure.isOfFlareMoments() ? " is a measure of flares: give --flares" : " is no curve: see sorvane info");
}
} // namespace

Outcome<std::vector<const Measure*>> chooseMeasures(const std::string& list, bool withFlares) {
    std::vector<const Measure*> chosen;
    if (list == "all") {
        for (const Measure& measure : allMeasures())
            if (fits(measure, withFlares) && !measure.needsRadiometry())
                chosen.push_back(&measure);
        return chosen;
    }
    std::istringstream names(list);
    for (std::string name; std::getline(names, name, ',');) {
        const Measure* const measure = findMeasure(name);
        if (measure == nullptr)
            return Problem("there is no measure " + name + ": see sorvane measures");
        if (!fits(*measure, withFlares))
            return misfit(*measure);
        chosen.push_back(measure);
    }
    return chosen;
}
} // namespace sorvane
