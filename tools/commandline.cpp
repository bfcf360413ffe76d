// The command line of `sorvane`: its sub-commands and the way to the one that is asked for.
#include "commandline.h"

#include <algorithm>
#include <cctype>

#include <CLI/CLI.hpp>

#include "checkcommand.h"
#include "comparecommand.h"
#include "convertcommand.h"
#include "democommand.h"
#include "exportcommand.h"
#include "helpformatter.h"
#include "infocommand.h"
#include "manualcommand.h"
#include "measurescommand.h"
#include "plotcommand.h"
#include "rendercommand.h"
#include "reportcommand.h"
#include "runscommand.h"
#include "signaturecommand.h"
#include "statscommand.h"

namespace sorvane {
namespace {
// Null when the arguments name none.
const SubCommand* askedFor(const CommandLine& commandLine) {
    const auto asked =
        std::ranges::find_if(commandLine.subCommands, [](const SubCommand& c) { return c.parser->parsed(); });
    return asked == commandLine.subCommands.end() ? nullptr : &*asked;
}

// One line, begun like all messages.
std::string usageFault(const CommandLine& commandLine, const CLI::ParseError& fault) {
    std::string command = commandLine.parser->get_name();
    std::string text = fault.what();
    if (const SubCommand* const asked = askedFor(commandLine))
        command += " " + asked->parser->get_name();
    else if (const std::vector<std::string> unknown = commandLine.parser->remaining(); !unknown.empty())
        text = "there is no sub-command or option " + unknown.front();
    else if (fault.get_name() == "RequiredError")
        text = "a sub-command is required";
    // The parser's texts are sentences, or begin with the name of an argument.
    if (text.size() > 1 && std::islower(static_cast<unsigned char>(text[1])) != 0)
        text.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(text.front())));
    return command + ": " + text + "; see " + command + " --help";
}
} // namespace

CommandLine::CommandLine()
    : parser(std::make_unique<CLI::App>("Looks into engagement files, checks and renders them.")) {
    parser->name("sorvane");
    parser->set_version_flag("--version", "sorvane " SORVANE_VERSION);
    parser->require_subcommand(1);
    parser->formatter(std::make_shared<HelpFormatter>()); // the sub-commands take it over
    subCommands = {
        addInfoCommand(*parser),    addCheckCommand(*parser),   addRenderCommand(*parser),
        addExportCommand(*parser),  addPlotCommand(*parser),    addMeasuresCommand(*parser),
        addCompareCommand(*parser), addConvertCommand(*parser), addSignatureCommand(*parser),
        addRunsCommand(*parser),    addStatsCommand(*parser),   addReportCommand(*parser),
        addDemoCommand(*parser),    addManualCommand(*parser),
    };
    for (const SubCommand& command : subCommands) {
        command.parser->set_version_flag("--version", parser->version());
        // What an argument is, its name says.
        for (CLI::Option* const option : command.parser->get_options())
            if (option->get_type_name() == "TEXT")
                option->type_name("");
    }
}

CommandLine::~CommandLine() = default;

ExitStatus runCommandLine(std::vector<std::string> arguments, Streams& streams) {
    const CommandLine commandLine;
    std::ranges::reverse(arguments); // the parser takes them from the back
    ExitStatus status = ExitStatus::Success;
    try {
        commandLine.parser->parse(std::move(arguments));
        status = askedFor(commandLine)->run(streams);
    } catch (const CLI::ParseError& end) {
        // Asking for help or the version ends here too, with success.
        if (end.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) {
            commandLine.parser->exit(end, streams.out, streams.err);
        } else {
            streams.err << usageFault(commandLine, end) << std::endl;
            status = ExitStatus::Failed;
        }
    }
    streams.out.flush();
    if (!streams.out) {
        streams.err << "sorvane: the results could not be written" << std::endl;
        return ExitStatus::Failed;
    }
    return status;
}
} // namespace sorvane
