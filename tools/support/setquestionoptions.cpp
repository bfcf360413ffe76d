// The options that say what is asked of a set of engagements.
#include "setquestionoptions.h"

#include <cmath>

#include <CLI/CLI.hpp>

namespace sorvane {
void addSetQuestionOptions(CLI::App& parser, SetQuestion& question) {
    parser
        .add_option(
            "--where", question.condition,
            "Condition in SQL for the rows that count: \"pattern = '007' AND flares > 2\". Nothing is written, "
            "whatever "
            "it says")
        ->type_name("SQL");
    parser.add_option("--by", question.groupColumn, "Column by whose values the runs are told apart")
        ->type_name("COLUMN");
    parser.add_option("--column", question.column, "Column of numbers to describe instead of the miss distance")
        ->type_name("COLUMN");
    question.distances = {1.0, 2.0, 5.0, 10.0, 20.0};
    parser
        .add_option(
            "--miss", question.distances,
            "Distances with commas between them: which share of the runs misses by no more (default 1,2,5,10,20)")
        ->delimiter(',')
        ->check(CLI::Validator(
            [](const std::string& text) {
                double number = 0.0;
                return CLI::detail::lexical_cast(text, number) && std::isfinite(number)
                           ? std::string()
                           : "finite numbers with commas between them are wanted, such as 5,10";
            },
            "", "finite"))
        ->type_name("LIST");
    parser.add_flag(
        "--with-faults", question.withFaulty, "Count the rows of files with faults, too, as far as they have numbers");
}
} // namespace sorvane
