// What a command offers, taken from the definitions of its options: what manual and completions are made from.
#include "commanddescription.h"

#include <algorithm>
#include <string_view>

#include <CLI/CLI.hpp>

namespace sorvane {
namespace {
// What stands between the braces of "FORMAT:{csv,kml}"; of "{a->0,b->1}" the part before each arrow.
std::vector<std::string> choicesOf(const std::string& typeName) {
    const std::size_t begin = typeName.find('{');
    const std::size_t end = typeName.find('}');
    if (begin == std::string::npos || end == std::string::npos || end < begin)
        return {};
    std::vector<std::string> choices = CLI::detail::split(typeName.substr(begin + 1, end - begin - 1), ',');
    for (std::string& choice : choices)
        choice.resize(std::min(choice.find("->"), choice.size()));
    return choices;
}

ValueKind kindOf(const OptionDescription& option) {
    const auto beginsWithAny = [&](std::initializer_list<std::string_view> words) {
        return std::ranges::any_of(words, [&](std::string_view word) { return option.metavariable.starts_with(word); });
    };
    if (!option.choices.empty())
        return ValueKind::Choice;
    if (option.metavariable.empty())
        return ValueKind::None;
    if (beginsWithAny({"DIR"}))
        return ValueKind::Directory;
    return option.names.empty() || beginsWithAny({"FILE", "PATH", "OUT"}) ? ValueKind::File : ValueKind::Text;
}

OptionDescription describe(const CLI::Option& option) {
    OptionDescription described;
    for (const std::string& name : option.get_snames())
        described.names.push_back(std::string("-").append(name));
    for (const std::string& name : option.get_lnames())
        described.names.push_back(std::string("--").append(name));
    const bool takesValue = option.get_items_expected_max() > 0;
    const std::string typeName = option.get_type_name();
    if (described.names.empty())
        described.metavariable = option.get_name(true);
    else if (takesValue)
        described.metavariable = typeName.substr(0, typeName.find(':'));
    described.description = option.get_description();
    described.defaultText = option.get_default_str();
    described.choices = choicesOf(typeName);
    described.value = kindOf(described);
    described.isRequired = option.get_required();
    described.isRepeatable = option.get_items_expected_max() > 1;
    return described;
}

std::string withoutFullStop(std::string text) {
    if (text.ends_with('.'))
        text.pop_back();
    return text;
}
} // namespace

CommandDescription describe(const CLI::App& command) {
    CommandDescription described;
    described.name = command.get_name();
    described.description = withoutFullStop(command.get_description());
    described.footer = command.get_footer();
    for (const CLI::Option* option : command.get_options()) {
        if (option->get_group().empty()) // hidden
            continue;
        OptionDescription each = describe(*option);
        (each.names.empty() ? described.arguments : described.options).push_back(std::move(each));
    }
    for (const CLI::App* subCommand : command.get_subcommands([](const CLI::App*) { return true; }))
        if (!subCommand->get_group().empty() && !subCommand->get_name().empty())
            described.subCommands.push_back(describe(*subCommand));
    return described;
}
} // namespace sorvane
