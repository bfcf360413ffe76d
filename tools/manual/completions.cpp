// Writes what makes shells complete the command's arguments.
#include "completions.h"

#include <algorithm>
#include <functional>

#include "commanddescription.h"

namespace sorvane {
namespace {
std::string replaced(std::string text, char from, const std::string& to) {
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, 1, to);
    return text;
}

// A word for bash and zsh in single quotes.
std::string quoted(const std::string& text) {
    return "'" + replaced(text, '\'', "'\\''") + "'";
}

template <class Items, class Text> std::string joined(const Items& items, const std::string& between, Text textOf) {
    std::string text;
    for (const auto& item : items) {
        if (!text.empty())
            text += between;
        text += std::invoke(textOf, item);
    }
    return text;
}

std::string joined(const std::vector<std::string>& words, const std::string& between) {
    return joined(words, between, std::identity());
}

// Only the first sentence, since shells show a line for each.
std::string firstSentence(const std::string& text) {
    return text.substr(0, std::min(text.find(". "), text.find("; ")));
}

std::string optionNames(const CommandDescription& command) {
    return joined(command.options, " ", [](const OptionDescription& option) { return joined(option.names, " "); });
}

// The lines that complete a value in bash. An empty reply has bash complete file names.
std::string bashValue(const OptionDescription& option) {
    switch (option.value) {
    case ValueKind::Choice:
        return "mapfile -t COMPREPLY < <(compgen -W " + quoted(joined(option.choices, " ")) +
               " -- \"$current\"); compopt +o default 2>/dev/null";
    case ValueKind::Directory:
        return "compopt +o default -o dirnames 2>/dev/null";
    case ValueKind::Text:
        return "compopt +o default 2>/dev/null";
    case ValueKind::File:
    case ValueKind::None:
        break;
    }
    return ":";
}

// The branches that complete the values of a sub-command's options.
std::string bashValues(const CommandDescription& command) {
    std::string branches;
    for (const OptionDescription& option : command.options) {
        if (option.value == ValueKind::None)
            continue;
        const std::string patterns =
            joined(option.names, "|", [&](const std::string& name) { return quoted(command.name + ' ' + name); });
        branches.append("    ").append(patterns).append(")\n        ").append(bashValue(option));
        branches += "\n        return\n        ;;\n";
    }
    return branches;
}

std::string bashArguments(const CommandDescription& command) {
    std::string branch = "    " + command.name + ")\n        if [[ $current == -* ]]; then\n";
    branch += "            mapfile -t COMPREPLY < <(compgen -W " + quoted(optionNames(command)) + " -- \"$current\")\n";
    branch += "        else\n            ";
    branch += command.arguments.empty() ? "compopt +o default 2>/dev/null" : bashValue(command.arguments.back());
    return branch + "\n        fi\n        ;;\n";
}

// In what _arguments takes a bracket ends a description and a colon a field.
std::string zshText(const std::string& text) {
    std::string escaped = replaced(text, '\\', "\\\\");
    for (const char special : {'[', ']', ':'})
        escaped = replaced(escaped, special, std::string("\\") + special);
    return escaped;
}

std::string zshAction(const OptionDescription& option) {
    switch (option.value) {
    case ValueKind::Choice:
        return "(" + joined(option.choices, " ") + ")";
    case ValueKind::File:
        return "_files";
    case ValueKind::Directory:
        return "_files -/";
    case ValueKind::Text:
    case ValueKind::None:
        break;
    }
    return " "; // nothing to offer
}

// The specifications of an option: names that mean the same exclude each other.
std::string zshOption(const OptionDescription& option) {
    std::string specifications;
    for (const std::string& name : option.names) {
        std::string text = option.isRepeatable ? "*" : "(" + joined(option.names, " ") + ")";
        text += name + (option.value != ValueKind::None && name.starts_with("--") ? "=" : "");
        text += "[" + zshText(firstSentence(option.description)) + "]";
        if (option.value != ValueKind::None)
            text += ":" + zshText(option.metavariable) + ":" + zshAction(option);
        specifications += " \\\n        " + quoted(text);
    }
    return specifications;
}

std::string zshArguments(const CommandDescription& command) {
    std::string text = "_arguments";
    for (const OptionDescription& option : command.options)
        text += zshOption(option);
    for (const OptionDescription& argument : command.arguments)
        text.append(" \\\n        ")
            .append(quoted(
                (argument.isRepeatable ? "*:" : ":") + zshText(argument.metavariable) + ":" + zshAction(argument)));
    return text;
}

// A word for fish in single quotes.
std::string fishQuoted(const std::string& text) {
    return "'" + replaced(replaced(text, '\\', "\\\\"), '\'', "\\'") + "'";
}

std::string fishValue(const OptionDescription& option) {
    switch (option.value) {
    case ValueKind::Choice:
        return " -x -a " + fishQuoted(joined(option.choices, " "));
    case ValueKind::File:
        return " -r -F";
    case ValueKind::Directory:
        return " -x -a '(__fish_complete_directories)'";
    case ValueKind::Text:
        return " -x";
    case ValueKind::None:
        break;
    }
    return "";
}

std::string fishOption(const std::string& begin, const OptionDescription& option) {
    std::string line = begin;
    for (const std::string& name : option.names)
        line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    return line + fishValue(option) + " -d " + fishQuoted(firstSentence(option.description)) + "\n";
}

std::string fishArguments(const std::string& begin, const CommandDescription& command) {
    std::string lines;
    for (const OptionDescription& option : command.options)
        lines += fishOption(begin, option);
    if (command.arguments.empty())
        return lines;
    const OptionDescription& last = command.arguments.back();
    return lines + begin + (last.value == ValueKind::File ? " -F" : fishValue(last)) + "\n";
}
} // namespace

std::string bashCompletion(const CommandDescription& command) {
    const std::string commands = joined(command.subCommands, " ", &CommandDescription::name);
    std::string script = "# Completion for " + command.name + " in bash.\n_" + command.name + "() {\n";
    script += R"(    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    # "--option=value" comes in three words.
    if [[ $current == = ]]; then
        current=
    elif [[ $previous == = && $COMP_CWORD -gt 1 ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    if [[ $COMP_CWORD -eq 1 ]]; then
        mapfile -t COMPREPLY < <(compgen -W )";
    script += quoted(commands + ' ' + optionNames(command)) + " -- \"$current\")\n";
    script += "        compopt +o default 2>/dev/null\n        return\n    fi\n";
    script += "    case \"${COMP_WORDS[1]} $previous\" in\n";
    for (const CommandDescription& subCommand : command.subCommands)
        script += bashValues(subCommand);
    script += "    esac\n    case ${COMP_WORDS[1]} in\n";
    for (const CommandDescription& subCommand : command.subCommands)
        script += bashArguments(subCommand);
    return script + "    esac\n}\ncomplete -o default -F _" + command.name + " " + command.name + "\n";
}

std::string zshCompletion(const CommandDescription& command) {
    const std::string function = "_" + command.name;
    std::string script = "#compdef " + command.name + "\n# Completion for " + command.name + " in zsh.\n" + function;
    script += "() {\n    local curcontext=\"$curcontext\" state line\n    typeset -A opt_args\n    _arguments -C";
    for (const OptionDescription& option : command.options)
        script += zshOption(option);
    script += " \\\n        '1:command:->command' \\\n        '*::argument:->argument'\n    case $state in\n";
    script += "    command)\n        local -a commands=(\n";
    for (const CommandDescription& subCommand : command.subCommands)
        script +=
            "            " + quoted(subCommand.name + ":" + zshText(firstSentence(subCommand.description))) + "\n";
    script += "        )\n        _describe command commands\n        ;;\n    argument)\n        case $words[1] in\n";
    for (const CommandDescription& subCommand : command.subCommands)
        script += "        " + subCommand.name + ")\n        " + zshArguments(subCommand) + "\n        ;;\n";
    script += "        esac\n        ;;\n    esac\n}\n";
    // Loaded by name, the file is the function's first call.
    script += "if [[ $funcstack[1] == " + function + " ]]; then\n    " + function + " \"$@\"\nelse\n    compdef ";
    return script + function + " " + command.name + "\nfi\n";
}

std::string fishCompletion(const CommandDescription& command) {
    const std::string asked = "__" + command.name + "_command_is";
    std::string script = "# Completion for " + command.name + " in fish.\nfunction " + asked;
    script += R"(
    set -l words (commandline -opc)
    if test (count $argv) -eq 0
        test (count $words) -eq 1
    else
        test (count $words) -gt 1; and test "$words[2]" = "$argv[1]"
    end
end
)";
    const std::string begin = "complete -c " + command.name;
    script += begin + " -f\n";
    const std::string first = begin + " -n " + asked;
    for (const OptionDescription& option : command.options)
        script += fishOption(first, option);
    for (const CommandDescription& subCommand : command.subCommands)
        script.append(first)
            .append(" -a ")
            .append(subCommand.name)
            .append(" -d ")
            .append(fishQuoted(firstSentence(subCommand.description)) + "\n");
    for (const CommandDescription& subCommand : command.subCommands) {
        std::string after = begin;
        after.append(" -n ").append(fishQuoted(asked + ' ' + subCommand.name));
        script += fishArguments(after, subCommand);
    }
    return script;
}
} // namespace sorvane
