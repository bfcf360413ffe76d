// Writes the command's manual page.
#include "manual.h"

#include <algorithm>
#include <cctype>
#include <sstream>

#include "commanddescription.h"
#include "roff.h"

namespace sorvane {
namespace {
struct Example {
    const char* purpose;
    const char* subCommand;
    const char* arguments;
};

constexpr Example kExamples[] = {
    {"Make the demonstration data.", "demo", "demonstration"},
    {"What an engagement is, with its closest approach.", "info", "demonstration/ETXYZ.OUT.turn"},
    {"Every fault of the files of a folder.", "check", "demonstration"},
    {"A movie from the threat's view.", "render", "demonstration/ETXYZ.OUT.turn -o turn.avi --view threat"},
    {"The samples as a table, with all measures.", "export",
     "demonstration/ETXYZ.OUT.turn -o turn.csv --unit m --measures all"},
    {"What each flare does: a row for each of its samples.", "export",
     "demonstration/ETXYZ.OUT.turn -o flares.csv --unit m --flares"},
    {"The paths over the Earth, with x to the north.", "export",
     "demonstration/ETXYZ.OUT.turn -o turn.czml --unit m --origin 47.5,-122.25,100 --x-bearing 0"},
    {"A scene that moves, for programs of 3D models.", "export", "demonstration/ETXYZ.OUT.turn -o turn.glb --unit m"},
    {"Half a minute of a long flight, in feet with z up, for the viewer.", "convert",
     "long.txt -o ETXYZ.OUT.long.Z --from 60 --to 89.999 --scale ft-to-m --axes x,-y,-z --unwrap-angles"},
    {"Whether two pictures look the same.", "compare", "a.png b.png --tolerance 8 --allowed 0.001 --difference d.png"},
    {"Where two trajectories differ by more than a centimetre.", "compare",
     "old/ETXYZ.OUT.1 new/ETXYZ.OUT.1 --tolerance 0.01"},
};

std::vector<const Example*> examplesFor(const CommandDescription& command) {
    std::vector<const Example*> examples;
    for (const Example& example : kExamples)
        if (std::ranges::find(command.subCommands, example.subCommand, &CommandDescription::name) !=
            command.subCommands.end())
            examples.push_back(&example);
    return examples;
}

std::string commandLineOf(const CommandDescription& command, const Example& example) {
    return command.name + ' ' + example.subCommand + ' ' + example.arguments;
}

std::string bold(const std::string& text) {
    return "\\fB" + roffLiteral(text) + "\\fR";
}

std::string italic(const std::string& text) {
    return "\\fI" + roffText(text) + "\\fR";
}

std::string paragraph(const std::string& text) {
    return ".PP\n" + roffFilled(roffText(text));
}

std::string section(const std::string& title) {
    return ".SH " + title + "\n";
}

// A term and what it means.
std::string item(const std::string& escapedTerm, const std::string& text) {
    return ".TP\n" + escapedTerm + "\n" + roffFilled(roffText(text));
}

std::string argumentText(const OptionDescription& argument) {
    return italic(argument.metavariable) + (argument.isRepeatable ? "..." : "");
}

std::string synopsis(const std::string& program, const CommandDescription& command) {
    std::string line = bold(program) + " " + bold(command.name) + " [" + italic("OPTION") + "]...";
    for (const OptionDescription& argument : command.arguments)
        line += argument.isRequired ? " " + argumentText(argument) : " [" + argumentText(argument) + "]";
    return line;
}

std::string optionTerm(const OptionDescription& option) {
    std::string term;
    for (const std::string& name : option.names)
        term += (term.empty() ? "" : ", ") + bold(name);
    return option.metavariable.empty() ? term : term + " " + italic(option.metavariable);
}

std::string sentence(const std::string& text) {
    return text.empty() || text.ends_with('.') ? text : text + '.';
}

std::string optionText(const OptionDescription& option) {
    std::string text = sentence(option.description);
    if (!option.choices.empty()) {
        text += " One of ";
        for (const std::string& choice : option.choices)
            text += (&choice == &option.choices.front() ? "" : ", ") + choice;
        text += '.';
    }
    if (!option.defaultText.empty())
        text += " The default is " + option.defaultText + '.';
    return text;
}

// Lines that begin with a blank stay as they are; other ones are paragraphs.
std::string footerText(const std::string& footer) {
    std::string text;
    std::istringstream lines(footer);
    bool isVerbatim = false;
    for (std::string line; std::getline(lines, line);) {
        const bool isIndented = line.starts_with(' ');
        if (isIndented != isVerbatim)
            text += isIndented ? ".PP\n.nf\n" : ".fi\n";
        if (isIndented)
            text += roffLiteral(line) + "\n";
        else if (!line.empty())
            text += paragraph(line);
        isVerbatim = isIndented;
    }
    return isVerbatim ? text + ".fi\n" : text;
}

// Every sub-command has these: they are explained once.
bool isCommon(const OptionDescription& option) {
    return option.names.back() == "--help" || option.names.back() == "--version";
}

std::string subCommandText(const std::string& program, const CommandDescription& command) {
    std::string text = ".SS " + program + " " + command.name + "\n" + synopsis(program, command) + "\n";
    text += paragraph(sentence(command.description));
    for (const OptionDescription& argument : command.arguments)
        text += item(argumentText(argument), optionText(argument));
    for (const OptionDescription& option : command.options)
        if (!isCommon(option))
            text += item(optionTerm(option), optionText(option));
    return text + footerText(command.footer);
}

std::string lowerFirst(std::string text) {
    if (!text.empty())
        text.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(text.front())));
    return text;
}

std::string exitStatusText() {
    return section("EXIT STATUS") + item("0", "The work was done, and nothing is wrong with what was looked at.") +
           item("1", "The work was done, and there are faults in what was looked at, or it differs.") +
           item("2", "The work could not be done, or the command was used wrongly.");
}

std::string environmentText() {
    return section("ENVIRONMENT") +
           item(
               bold("PELSAR_DATA"),
               "The folder of the stock models and terrain, which take the place of files that a trajectory names and "
               "that are missing; with its closing slash.") +
           item(
               bold("SORVANE_DEPTH"),
               "How depths are stored in pictures: slices for systems whose float depths are at fault, one-range for "
               "plain depths, which let hidden surfaces show at a distance.") +
           item(
               bold("SORVANE_DEBUG"),
               "When set, what the graphics driver says of a shader that it refuses is printed.");
}

std::string filesText(const std::string& dataRoot) {
    return section("FILES") +
           item(
               italic("ETXYZ.OUT.*"),
               "Trajectory files by their usual name; any name will do. One that ends in .Z is read through "
               "uncompress.") +
           item(italic(dataRoot), "Stock models and terrain.");
}

std::string examplesText(const CommandDescription& command) {
    std::string text;
    for (const Example* example : examplesFor(command)) {
        text += (text.empty() ? "" : ".PP\n") + roffFilled(roffText(example->purpose));
        text += ".PP\n.RS\n.nf\n" + roffLiteral(commandLineOf(command, *example)) + "\n.fi\n.RE\n";
    }
    return section("EXAMPLES") + text;
}
} // namespace

std::vector<std::string> manualExamples(const CommandDescription& command) {
    std::vector<std::string> texts;
    for (const Example* example : examplesFor(command))
        texts.push_back(commandLineOf(command, *example));
    return texts;
}

std::string manualPage(const CommandDescription& command, const ManualFacts& facts) {
    std::string page = ".\\\" Made from the definitions of the command's options.\n";
    std::string title = command.name;
    std::ranges::transform(title, title.begin(), [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    page += ".TH " + title + " 1 " + facts.date + " \"" + command.name + " " + facts.version + "\"\n";
    page += section("NAME") + command.name + " \\- " + roffText(lowerFirst(command.description)) + "\n";
    page += section("SYNOPSIS");
    for (const CommandDescription& subCommand : command.subCommands)
        page +=
            (&subCommand == &command.subCommands.front() ? "" : ".br\n") + synopsis(command.name, subCommand) + "\n";
    page += section("DESCRIPTION");
    page += roffFilled(roffText(
        "The companion of the viewer new_sorvane for trajectories of missile engagements. It needs no display. Results "
        "go to standard output, messages to standard error. Every sub-command has the options"));
    for (const OptionDescription& option : command.options)
        page += item(optionTerm(option), optionText(option));
    page += section("COMMANDS");
    for (const CommandDescription& subCommand : command.subCommands)
        page += subCommandText(command.name, subCommand);
    page += exitStatusText() + environmentText() + filesText(facts.dataRoot) + examplesText(command);
    return page + section("SEE ALSO") + ".BR new_sorvane (1)\n";
}
} // namespace sorvane
