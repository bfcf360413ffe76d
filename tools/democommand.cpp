// `sorvane demo`: makes the demonstration data.
#include "democommand.h"

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "makedemonstration.h"

SubCommand addDemoCommand(CLI::App& parent) {
    const auto directory = std::make_shared<std::string>();
    CLI::App* const parser = parent.add_subcommand(
        "demo", "Make the demonstration data: trajectory files, and the data tree that they name.");
    parser->add_option("DIR", *directory, "Directory to fill; made when it is missing")->required();
    return {parser, [directory](Streams& streams) {
                if (const Failure failure = makeDemonstration(*directory)) {
                    streams.err << "sorvane demo: " << *failure << std::endl;
                    return ExitStatus::Failed;
                }
                return ExitStatus::Success;
            }};
}
