// What the parts of the compiled module share: paths, texts and errors between Python and the libraries.
#include "bindings.h"

#include <exception>
#include <utility>

#include <pybind11/stl.h>

#include "fileerror.h"

namespace py = pybind11;

namespace sorvane {
std::string pathOf(const py::object& path) {
    PyObject* encoded = nullptr;
    if (PyUnicode_FSConverter(path.ptr(), &encoded) == 0)
        throw py::error_already_set();
    const auto bytes = py::reinterpret_steal<py::bytes>(encoded);
    const std::string name = bytes;
    return name == "-" ? "./-" : name;
}

LengthUnit lengthUnitOf(const std::optional<std::string>& symbol) {
    if (!symbol)
        return LengthUnit::Unstated;
    if (*symbol == "m")
        return LengthUnit::Metres;
    if (*symbol == "ft")
        return LengthUnit::Feet;
    throw py::value_error("the unit is \"m\", \"ft\" or None");
}

py::str fileName(const std::string& bytes) {
    return py::reinterpret_steal<py::str>(
        PyUnicode_DecodeFSDefaultAndSize(bytes.data(), static_cast<Py_ssize_t>(bytes.size())));
}

py::str shownText(const std::string& bytes) {
    return py::reinterpret_steal<py::str>(
        PyUnicode_DecodeUTF8(bytes.data(), static_cast<Py_ssize_t>(bytes.size()), "replace"));
}

py::object recordClass(const char* name) {
    return py::module_::import("sorvane.records").attr(name);
}

std::mutex& loadersMutex() {
    static std::mutex mutex;
    return mutex;
}

void bindErrors(py::module_& /*module*/) {
    py::register_exception_translator([](std::exception_ptr thrown) {
        try {
            if (thrown)
                std::rethrow_exception(std::move(thrown));
        } catch (const FileError& fault) {
            const auto orNone = [](std::int64_t number) {
                return number > 0 ? py::object(py::int_(number)) : py::object(py::none());
            };
            const py::object type = recordClass("Error");
            const py::object file = fault.file.empty() ? py::object(py::none()) : py::object(fileName(fault.file));
            const py::object error = type(shownText(fault.what()), file, orNone(fault.line), orNone(fault.column));
            PyErr_SetObject(type.ptr(), error.ptr());
        }
    });
}
} // namespace sorvane
