// File names with a place for a number, as in "frame-%04d.png".
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "problem.h"

namespace sorvane {
class NumberedName {
public:
    // Reads the conversions in the last component of `path`: "%d" and "%04d" stand for the number, "%%" for a percent
    // sign. Anything else behind a percent sign, or a second number, is refused.
    explicit NumberedName(const std::string& path);

    // Why the name is refused; nothing when it is not.
    const std::optional<sorvane::Problem>& problem() const { return problem_; }
    bool hasNumber() const { return hasNumber_; }

    // The path with the number (at least 0) in its place.
    std::string path(std::int64_t number) const;

private:
    std::string before_;
    std::string after_;
    std::size_t width_ = 0;
    char fill_ = ' ';
    bool hasNumber_ = false;
    std::optional<sorvane::Problem> problem_;
};
} // namespace sorvane
