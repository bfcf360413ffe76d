// The Python module's compiled part, `sorvane._core`.
#include "bindings.h"

using namespace sorvane;

PYBIND11_MODULE(_core, module) {
    module.attr("__version__") = SORVANE_VERSION;
    bindErrors(module);
    bindEngagement(module);
    bindMeasures(module);
    bindCheck(module);
    bindRender(module);
    bindReflectance(module);
}
