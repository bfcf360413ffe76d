// `sorvane manual`: writes the manual page and the completions; hidden, for who packages the command.
#include "manualcommand.h"

#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "commanddescription.h"
#include "completions.h"
#include "manual.h"
#include "worldtime.h"

namespace sorvane {
namespace {
// Today, or the day that a reproducible build asks for.
std::string dateOfPage() {
    const char* const asked = std::getenv("SOURCE_DATE_EPOCH");
    const double seconds = asked != nullptr ? std::strtod(asked, nullptr) : static_cast<double>(std::time(nullptr));
    const std::size_t length = std::string("2026-11-21").size();
    return worldTimeText(worldTimeAfter(0, seconds).value_or(0)).substr(0, length);
}

std::string textOf(const CLI::App& command, const std::string& kind) {
    const CommandDescription description = describe(command);
    if (kind == "bash")
        return bashCompletion(description);
    if (kind == "zsh")
        return zshCompletion(description);
    if (kind == "fish")
        return fishCompletion(description);
    return manualPage(description, {SORVANE_VERSION, dateOfPage(), SORVANE_DATA_ROOT});
}
} // namespace

SubCommand addManualCommand(CLI::App& parent) {
    const auto kind = std::make_shared<std::string>();
    CLI::App* const parser = parent.add_subcommand("manual", "Write the manual page or a shell's completions.");
    parser->group(""); // hidden
    parser->add_option("KIND", *kind, "What to write")
        ->required()
        ->check(CLI::IsMember({"man", "bash", "zsh", "fish"}));
    return {parser, [kind, &parent](Streams& streams) {
                streams.out << textOf(parent, *kind);
                return ExitStatus::Success;
            }};
}
} // namespace sorvane
