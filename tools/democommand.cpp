// `sorvane demo`: makes the demonstration data.
#include "democommand.h"

#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "interrupt.h"
#include "makedemonstration.h"

namespace sorvane {
SubCommand addDemoCommand(CLI::App& parent) {
    const auto directory = std::make_shared<std::string>();
    const auto root = std::make_shared<std::string>();
    CLI::App* const parser = parent.add_subcommand(
        "demo", "Make the demonstration data: trajectory files, and the data tree that they name.");
    parser->add_option("DIR", *directory, "Directory to fill; made when it is missing")->required();
    parser
        ->add_option(
            "--data-root", *root, "Absolute path that the files name as the place of the data tree, to move it there")
        ->type_name("PATH")
        ->check([](const std::string& path) {
            return path.starts_with('/') ? "" : "an absolute path is wanted, not " + path;
        });
    return {parser, [directory, root](Streams& streams) {
                const Interrupt interrupt;
                const auto stops = [] {
                    return Interrupt::requested() != 0;
                };
                if (const auto failure = sorvane::makeDemonstration(*directory, *root, stops)) {
                    streams.err << "sorvane demo: " << *failure << std::endl;
                    return ExitStatus::Failed;
                }
                return ExitStatus::Success;
            }};
}
} // namespace sorvane
