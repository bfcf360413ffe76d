// A check of options that take a number.
#include "finiterange.h"

#include <cmath>
#include <cstdlib>
#include <string>

#include <CLI/CLI.hpp>

namespace sorvane {
CLI::Validator finiteRange(double least, double most) {
    const CLI::Validator isNumber(
        [](const std::string& text) {
            return std::isnan(std::strtod(text.c_str(), nullptr)) ? text + " is not a number" : std::string();
        },
        "");
    return CLI::Range(least, most) & isNumber;
}
} // namespace sorvane
