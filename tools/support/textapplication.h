// What Qt wants before it draws texts, without a display.
#pragma once

#include <memory>
#include <optional>

#include "problem.h"

#include <QGuiApplication>

namespace sorvane {
using ApplicationMaker = std::unique_ptr<QGuiApplication> (*)(int& argumentCount, char** arguments);

// A QApplication for what needs widgets, too.
template <class Application = QGuiApplication>
std::unique_ptr<QGuiApplication> makeApplication(int& argumentCount, char** arguments) {
    return std::make_unique<Application>(argumentCount, arguments);
}

// As long as one lives, texts can be drawn on its thread. Where the program has an application of its own, that does.
class TextApplication {
public:
    explicit TextApplication(ApplicationMaker make = makeApplication<>);
    ~TextApplication();
    TextApplication(const TextApplication&) = delete;
    TextApplication& operator=(const TextApplication&) = delete;

    // Why no text can be drawn; nothing when all is well.
    const std::optional<sorvane::Problem>& problem() const { return problem_; }

private:
    std::unique_ptr<QGuiApplication> application_;
    std::optional<sorvane::Problem> problem_;
};
} // namespace sorvane
