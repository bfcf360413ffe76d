// The one word for what is wrong, and for what a function answers that may fail.
#pragma once

#include <string>
#include <utility>
#include <variant>

namespace sorvane {
// In words for the user, without a full stop: "is shorter than its header". Made of its words, so that a function can
// return them.
struct Problem {
    Problem(std::string words) : text(std::move(words)) {} // NOLINT(google-explicit-constructor)
    Problem(const char* words) : text(words) {}            // NOLINT(google-explicit-constructor)

    std::string text;

    bool operator==(const Problem&) const = default;
};

// A value, or what kept it from being there.
template <class T> class [[nodiscard]] Outcome {
public:
    Outcome(T value) : held_(std::move(value)) {}           // NOLINT(google-explicit-constructor): `return value;`
    Outcome(Problem problem) : held_(std::move(problem)) {} // NOLINT(google-explicit-constructor)

    explicit operator bool() const { return std::holds_alternative<T>(held_); }

    // Only of one that holds a value.
    T& operator*() & { return *std::get_if<T>(&held_); }
    const T& operator*() const& { return *std::get_if<T>(&held_); }
    T&& operator*() && { return std::move(*std::get_if<T>(&held_)); }
    T* operator->() { return std::get_if<T>(&held_); }
    const T* operator->() const { return std::get_if<T>(&held_); }

    // Only of one that holds none.
    const Problem& problem() const { return *std::get_if<Problem>(&held_); }

private:
    std::variant<T, Problem> held_;
};
} // namespace sorvane
