// A locale that writes one and a half as "1,5", made on the spot: a bare machine has none installed.
#pragma once

#include <clocale>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "environmentvariable.h"
#include "temporarydirectory.h"

// While one is alive, numbers in the process's C locale are written with a decimal comma. Throws where no such locale
// can be made, so that no test passes without it.
class DecimalCommaLocale {
public:
    DecimalCommaLocale()
        : before_(std::setlocale(LC_NUMERIC, nullptr)), locPath_("LOCPATH", directory_.path().string()) {
        const std::string source = directory_.write(
            "source", "comment_char %\nescape_char /\nLC_NUMERIC\ndecimal_point \",\"\nthousands_sep \"\"\n"
                      "grouping -1\nEND LC_NUMERIC\n");
        // It warns about the categories that are left out and ends with status 1, but makes the one asked for.
        const std::string command = "localedef -c -i '" + source + "' -f ANSI_X3.4-1968 '" +
                                    directory_.file("decimal_comma") + "' >/dev/null 2>&1";
        [[maybe_unused]] const int status = std::system(command.c_str());
        if (std::setlocale(LC_NUMERIC, "decimal_comma") == nullptr)
            throw std::runtime_error("localedef can't make a locale: is the package locales installed?");
    }
    ~DecimalCommaLocale() { std::setlocale(LC_NUMERIC, before_.c_str()); }
    DecimalCommaLocale(const DecimalCommaLocale&) = delete;
    DecimalCommaLocale& operator=(const DecimalCommaLocale&) = delete;

private:
    std::string before_;
    TemporaryDirectory directory_;
    EnvironmentVariable locPath_;
};
