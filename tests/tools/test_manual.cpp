// Manual page and completions from definitions of options; manual_test.sh has the real programs read them.
#include <sstream>

#include <gmock/gmock.h>

#include <CLI/CLI.hpp>

#include "commanddescription.h"
#include "commandline.h"
#include "completions.h"
#include "manual.h"
#include "roff.h"

using namespace sorvane;

namespace {
using testing::ElementsAre;
using testing::HasSubstr;

TEST(CommandDescription, FollowsFromTheDefinitions) {
    CLI::App app("Does it.", "does");
    CLI::App* const sub = app.add_subcommand("it", "Do [it]: 'now'.");
    app.add_subcommand("secret", "Hidden.")->group("");
    std::vector<std::string> files;
    std::string text;
    int number = 0;
    bool flag = false;
    sub->add_option("FILE", files, "Files")->required();
    sub->add_option("-d,--dir", text, "Place")->type_name("DIR");
    sub->add_option("--out", text, "Result")->type_name("OUT.png");
    sub->add_option("--kind", number, "Kind")
        ->type_name("KIND")
        ->transform(CLI::CheckedTransformer(std::vector<std::pair<std::string, int>>{{"near", 0}, {"far", 1}}));
    sub->add_option("--count", number, "Count")->type_name("N");
    sub->add_flag("--quick", flag, "Quickly");
    const CommandDescription described = describe(app);
    ASSERT_EQ(described.subCommands.size(), 1U);
    const CommandDescription& it = described.subCommands[0];
    EXPECT_EQ(it.description, "Do [it]: 'now'");
    ASSERT_EQ(it.arguments.size(), 1U);
    EXPECT_TRUE(it.arguments[0].isRepeatable);
    ASSERT_EQ(it.options.size(), 6U); // with --help
    EXPECT_THAT(it.options[1].names, ElementsAre("-d", "--dir"));
    EXPECT_EQ(it.options[1].value, ValueKind::Directory);
    EXPECT_EQ(it.options[2].value, ValueKind::File);
    EXPECT_THAT(it.options[3].choices, ElementsAre("near", "far"));
    EXPECT_EQ(it.options[4].value, ValueKind::Text);
    EXPECT_EQ(it.options[5].value, ValueKind::None);
    EXPECT_THAT(zshCompletion(described), HasSubstr(R"('it:Do \[it\]\: '\''now'\''')"));
    EXPECT_THAT(fishCompletion(described), HasSubstr(R"(-a it -d 'Do [it]: \'now\'')"));
}

TEST(Roff, EscapesWhatWouldBeARequestOrAnotherCharacter) {
    EXPECT_EQ(roffText("a\\b 'c' ~^` \"x\" -o 5°"), R"(a\eb \(aqc\(aq \(ti\(ha\(ga \(dqx\(dq -o 5\[u00B0])");
    EXPECT_EQ(roffLiteral("--unit"), R"(\-\-unit)");
    EXPECT_EQ(roffFilled("One. .Z files"), "One.\n\\&.Z files\n");
}

TEST(Manual, ExamplesUseOptionsThatThereAre) {
    const CommandLine commandLine;
    const CommandDescription described = describe(*commandLine.parser);
    const std::vector<std::string> examples = manualExamples(described);
    EXPECT_GE(examples.size(), 3U);
    for (const std::string& example : examples) {
        std::istringstream words(example);
        std::string program;
        std::string subCommand;
        words >> program >> subCommand;
        for (std::string word; words >> word;)
            if (word.size() > 1 && word.front() == '-') {
                EXPECT_NE(commandLine.parser->get_subcommand(subCommand)->get_option_no_throw(word), nullptr)
                    << example;
            }
    }
}
} // namespace
