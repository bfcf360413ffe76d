// The command line as a whole.
#include <filesystem>

#include <gmock/gmock.h>

#include "commandline.h"
#include "commandrun.h"
#include "standardstreams.h"
#include "temporarydirectory.h"

#include <CLI/CLI.hpp>

using namespace sorvane;

namespace {
using testing::HasSubstr;
using testing::StartsWith;

TEST(CommandLine, TellsHelpAndVersionOnStandardOutput) {
    EXPECT_THAT(runCommand({"--version"}).out, StartsWith("sorvane "));
    EXPECT_EQ(runCommand({"--version"}).status, ExitStatus::Success);
    const CommandLine commandLine;
    for (const SubCommand& command : commandLine.subCommands) {
        const CommandRun run = runCommand({command.parser->get_name(), "--help"});
        EXPECT_EQ(run.status, ExitStatus::Success);
        EXPECT_THAT(run.out, HasSubstr(command.parser->get_description()));
    }
}

TEST(CommandLine, RefusesWrongUsageOnStandardError) {
    struct Row {
        std::vector<std::string> arguments;
        const char* message;
    };
    for (const Row& row : std::initializer_list<Row>{
             {{}, "sorvane: a sub-command is required; see sorvane --help\n"},
             {{"nonsense", "a"}, "sorvane: there is no sub-command or option nonsense; see sorvane --help\n"},
             {{"--nonsense"}, "sorvane: there is no sub-command or option --nonsense; see sorvane --help\n"},
             {{"demo"}, "sorvane demo: DIR is required; see sorvane demo --help\n"},
             {{"demo", "a", "b"},
              "sorvane demo: the following argument was not expected: b; see sorvane demo --help\n"},
             {{"demo", "a", "--data-root", "b"},
              "sorvane demo: --data-root: an absolute path is wanted, not b; see sorvane demo --help\n"}}) {
        const CommandRun run = runCommand(row.arguments);
        EXPECT_EQ(run.status, ExitStatus::Failed);
        EXPECT_EQ(run.out, "");
        EXPECT_EQ(run.err, row.message);
    }
}

TEST(CommandLine, MakesTheDemonstration) {
    const TemporaryDirectory directory;
    EXPECT_EQ(runCommand({"demo", directory.file("demo")}).status, ExitStatus::Success);
    EXPECT_TRUE(std::filesystem::exists(directory.file("demo/ETXYZ.OUT.turn")));
    const CommandRun failed = runCommand({"demo", directory.file("demo/ETXYZ.OUT.turn") + "/below"});
    EXPECT_EQ(failed.status, ExitStatus::Failed);
    EXPECT_THAT(failed.err, StartsWith("sorvane demo: "));
}

TEST(StandardStreams, KeepStandardOutputForResults) {
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    {
        StandardStreams standard;
        std::puts("a library's line");
        standard.streams().out << std::string(100000, 'r');
    }
    std::puts("after");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "a library's line\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), std::string(100000, 'r') + "after\n");
}
} // namespace
