// Lays out what --help prints.
#include "helpformatter.h"

#include <sstream>

namespace sorvane {
std::string HelpFormatter::make_option_desc(const CLI::Option* option) const {
    return broken(CLI::Formatter::make_option_desc(option));
}

std::string HelpFormatter::make_subcommand(const CLI::App* subCommand) const {
    std::ostringstream line;
    CLI::detail::format_help(
        line, subCommand->get_display_name(true), broken(subCommand->get_description()), column_width_);
    return line.str();
}

std::string HelpFormatter::broken(const std::string& description) const {
    constexpr std::size_t kColumns = 100;
    const std::size_t width = kColumns - column_width_;
    std::istringstream words(description);
    std::string text;
    std::size_t length = 0; // of the last line
    for (std::string word; words >> word; length += word.size()) {
        if (length > 0) {
            const bool fits = length + 1 + word.size() <= width;
            text += fits ? ' ' : '\n';
            length = fits ? length + 1 : 0;
        }
        text += word;
    }
    return text;
}
} // namespace sorvane
