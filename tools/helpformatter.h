// Lays out what --help prints.
#pragma once

#include <CLI/CLI.hpp>

namespace sorvane {
// Like its base, but breaks descriptions between words, so that lines fit into 100 columns.
class HelpFormatter : public CLI::Formatter {
public:
    std::string make_option_desc(const CLI::Option* option) const override;
    std::string make_subcommand(const CLI::App* subCommand) const override;

private:
    std::string broken(const std::string& description) const;
};
} // namespace sorvane
