// The option that says what a trajectory's lengths are in.
#include "unitoption.h"

#include <CLI/CLI.hpp>

namespace sorvane {
void addUnitOption(CLI::App& parser, LengthUnit& unit, const char* description) {
    parser
        .add_option_function<std::string>(
            "--unit",
            [&unit](const std::string& symbol) { unit = symbol == "ft" ? LengthUnit::Feet : LengthUnit::Metres; },
            description)
        ->check(CLI::IsMember({"ft", "m"}))
        ->type_name("UNIT");
}
} // namespace sorvane
