// sorvane.measures: the table of measures.
#include "bindings.h"
#include "measure.h"

#include <pybind11/stl.h>

namespace py = pybind11;

namespace sorvane {
namespace {
py::list measures(const std::optional<std::string>& unit) {
    const LengthUnit length = lengthUnitOf(unit);
    const py::object record = recordClass("Measure");
    py::list all;
    for (const Measure& measure : allMeasures())
        all.append(record(
            measure.name, kindOf(measure), unitSymbol(measure.unit, length).toStdString(),
            columnName(measure, length).toStdString(), measure.definition, measure.formula, needOf(measure)));
    return all;
}
} // namespace

void bindMeasures(py::module_& module) {
    module.def(
        "measures", measures, py::arg("unit") = py::none(),
        "The table of measures, as sorvane measures lists it; unit, \"m\" or \"ft\", names the units of length.");
}
} // namespace sorvane
