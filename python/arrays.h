// NumPy arrays over memory of the libraries.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include <pybind11/numpy.h>

namespace sorvane {
using Shape = std::vector<pybind11::ssize_t>;

// A read-only array over memory that lives and stays as it is as long as `owner`. Strides are in bytes.
template <class Number>
pybind11::array viewOf(const Number* first, const Shape& shape, const Shape& strides, pybind11::handle owner) {
    pybind11::array array(pybind11::dtype::of<Number>(), shape, strides, first, owner);
    array.attr("flags").attr("writeable") = false;
    return array;
}

// An array of one's own, of as many numbers as the shape says, which are not copied.
template <class Number> pybind11::array arrayOf(std::vector<Number> numbers, const Shape& shape) {
    auto held = std::make_unique<std::vector<Number>>(std::move(numbers));
    const Number* const first = held->data();
    const pybind11::capsule owner(held.get(), [](void* vector) { delete static_cast<std::vector<Number>*>(vector); });
    held.release();
    return pybind11::array_t<Number>(shape, first, owner);
}

template <class Number> pybind11::array arrayOf(std::vector<Number> numbers) {
    const Shape shape{static_cast<pybind11::ssize_t>(numbers.size())};
    return arrayOf(std::move(numbers), shape);
}
} // namespace sorvane
