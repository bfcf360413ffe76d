// The parts of the compiled module, and what they share.
#pragma once

#include <optional>
#include <string>

#include <pybind11/pybind11.h>

#include "loadersmutex.h"
#include "measuretext.h"

namespace sorvane {
void bindErrors(pybind11::module_& module);
void bindEngagement(pybind11::module_& module);
void bindMeasures(pybind11::module_& module);
void bindCheck(pybind11::module_& module);
void bindRender(pybind11::module_& module);
void bindReflectance(pybind11::module_& module);

// The path of a file for who takes "-" for standard input.
std::string pathOf(const pybind11::object& path);
// "ft", "m" or None.
LengthUnit lengthUnitOf(const std::optional<std::string>& symbol);

// A name as the file system has it, and a text for people, of which any bytes may be part.
pybind11::str fileName(const std::string& bytes);
pybind11::str shownText(const std::string& bytes);

// A class of the package's own Python code.
pybind11::object recordClass(const char* name);
} // namespace sorvane
