// The command line of `sorvane`: its sub-commands and the way to the one that is asked for.
#include "commandline.h"

#include <algorithm>

#include <CLI/CLI.hpp>

#include "checkcommand.h"
#include "comparecommand.h"
#include "democommand.h"
#include "exportcommand.h"
#include "infocommand.h"
#include "manualcommand.h"
#include "rendercommand.h"

CommandLine::CommandLine()
    : parser(std::make_unique<CLI::App>("Looks into engagement files, checks and renders them.")) {
    parser->name("sorvane");
    parser->set_version_flag("--version", "sorvane " SORVANE_VERSION);
    parser->require_subcommand(1);
    subCommands = {
        addInfoCommand(*parser),    addCheckCommand(*parser), addRenderCommand(*parser), addExportCommand(*parser),
        addCompareCommand(*parser), addDemoCommand(*parser),  addManualCommand(*parser),
    };
    for (const SubCommand& command : subCommands)
        command.parser->set_version_flag("--version", parser->version());
}

CommandLine::~CommandLine() = default;

ExitStatus runCommandLine(std::vector<std::string> arguments, Streams& streams) {
    const CommandLine commandLine;
    std::ranges::reverse(arguments); // the parser takes them from the back
    try {
        commandLine.parser->parse(std::move(arguments));
    } catch (const CLI::ParseError& end) {
        // Asking for help or the version ends here too, with success.
        return commandLine.parser->exit(end, streams.out, streams.err) == 0 ? ExitStatus::Success : ExitStatus::Failed;
    }
    const auto asked =
        std::ranges::find_if(commandLine.subCommands, [](const SubCommand& c) { return c.parser->parsed(); });
    const ExitStatus status = asked->run(streams);
    streams.out.flush();
    if (!streams.out) {
        streams.err << "sorvane: the results could not be written" << std::endl;
        return ExitStatus::Failed;
    }
    return status;
}
