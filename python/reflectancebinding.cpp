// The reflectance model over arrays.
#include "bindings.h"

#include <vector>

#include "arrays.h"
#include "sandfordrobertson.h"

namespace py = pybind11;

namespace sorvane {
namespace {
using Floats = py::array_t<float, py::array::c_style | py::array::forcecast>;

Vector<float> vectorAt(const float* components, py::ssize_t i) {
    return {components[3 * i], components[3 * i + 1], components[3 * i + 2], 0.0F};
}

// Directions are (4, n, 3): normal, to the source, to the viewer, glint; parameters (5, n): b, e, rho_d, epsilon, G.
py::array reflectances(int mode, const Floats& directions, const Floats& parameters) {
    if (directions.ndim() != 3 || parameters.ndim() != 2 || directions.shape(0) != 4 || parameters.shape(0) != 5 ||
        directions.shape(2) != 3 || directions.shape(1) != parameters.shape(1))
        throw py::value_error("directions are (4, n, 3), parameters (5, n)");
    const py::ssize_t count = parameters.shape(1);
    const float* const normals = directions.data();
    const float* const toSources = normals + 3 * count;
    const float* const toViewers = toSources + 3 * count;
    const float* const glints = toViewers + 3 * count;
    const float* const p = parameters.data();
    std::vector<float> values(static_cast<std::size_t>(count));
    {
        const py::gil_scoped_release unlocked;
        for (py::ssize_t i = 0; i < count; ++i)
            values[static_cast<std::size_t>(i)] = sr_brdf_internal(
                mode, vectorAt(normals, i), vectorAt(toSources, i), vectorAt(toViewers, i), p[i], p[count + i],
                p[2 * count + i], p[3 * count + i], p[4 * count + i], vectorAt(glints, i));
    }
    return arrayOf(std::move(values));
}

py::array normalisations(const Floats& b) {
    std::vector<float> values(b.data(), b.data() + b.size());
    for (float& value : values)
        value = sr_normalisation(value);
    return arrayOf(std::move(values));
}
} // namespace

void bindReflectance(py::module_& module) {
    module.def("reflectances", reflectances);
    module.def("normalisations", normalisations);
}
} // namespace sorvane
