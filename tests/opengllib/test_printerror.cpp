// The error line, to the letter, who gets messages, and the one way to end the process.
#include <cstdio>
#include <cstdlib>
#include <iostream>

#include <gmock/gmock.h>

#include "endprocess.h"
#include "fail.h"
#include "messages.h"
#include "printerror.h"
#include "temporarydirectory.h"

using namespace sorvane;

using testing::ElementsAre;
using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

namespace {
std::vector<std::string> textsOf(const MessageCollection& collection) {
    std::vector<std::string> texts;
    for (const Message& message : collection.messages())
        texts.push_back((message.isError ? "error: " : "") + message.text);
    return texts;
}
} // namespace

TEST(PrintError, NamesTheFunctionBeforeTheFileAndFormatsItsArgumentsWhateverTheCountSays) {
    CaptureStderr();
    CaptureStdout();
    printError("a", "b", 1, "%s and %d of %5.2f%%", 0, "text %d", -7, 2.5);
    printError("a", "b", 2, "%s", 9, std::string(5000, 'x').c_str());
    EXPECT_EQ(
        GetCapturedStderr(), "Error in function \"b\" of file \"a\" (line #1): text %d and -7 of  2.50%\n"
                             "Error in function \"b\" of file \"a\" (line #2): " +
                                 std::string(5000, 'x') + "\n");
    EXPECT_EQ(GetCapturedStdout(), "");
}

TEST(Fail, NamesTheFileAndTheLineOfItsCaller) {
    CaptureStderr();
    const unsigned line = __LINE__ + 1;
    EXPECT_FALSE(sorvane::fail("Load", "%d%s", 9, "%"));
    EXPECT_EQ(
        GetCapturedStderr(),
        "Error in function \"Load\" of file \"" __FILE__ "\" (line #" + std::to_string(line) + "): 9%\n");
}

TEST(EndProcessDeathTest, FlushesEveryStreamAndEndsWithStatusOne) {
    const TemporaryDirectory directory;
    const std::string output = directory.file("output");
    EXPECT_EXIT(
        {
            std::FILE* const stream = std::fopen(output.c_str(), "w");
            std::fputs("buffered", stream);
            std::atexit([] { std::fputs("exit handlers ran", stderr); });
            endProcess();
        },
        testing::ExitedWithCode(1), testing::Eq(""));
    EXPECT_EQ(readWholeFile(output), "buffered");
}

TEST(EndProcessDeathTest, EndsTheProcessWhenTheHandlerReturns) {
    EXPECT_EXIT(
        {
            setEndProcessHandler([] { std::fputs("handled", stderr); });
            endProcess();
        },
        testing::ExitedWithCode(1), testing::Eq("handled"));
}

TEST(Messages, GoToTheLatestCollectionAndPrintNothingMeanwhile) {
    CaptureStdout();
    CaptureStderr();
    MessageCollection outer;
    {
        const MessageCollection inner;
        printMessage("%d tiles", 3);
        printError("file", "function", 1, "no %s", 1, "file");
        EXPECT_THAT(textsOf(inner), ElementsAre("3 tiles", "error: no file"));
    }
    printErrorMessage("back %s", std::string(3000, 'x').c_str());
    EXPECT_THAT(textsOf(outer), ElementsAre("error: back " + std::string(3000, 'x')));
    EXPECT_EQ(outer.take().size(), 1U);
    EXPECT_TRUE(outer.messages().empty());
    EXPECT_EQ(GetCapturedStdout(), "");
    EXPECT_EQ(GetCapturedStderr(), "");
}

TEST(Messages, ArePrintedWhenNobodyCollects) {
    { const MessageCollection over; }
    CaptureStdout();
    CaptureStderr();
    printMessage("100%% of %s", "tiles");
    printErrorMessage("bad");
    EXPECT_EQ(GetCapturedStdout(), "100% of tiles\n");
    EXPECT_EQ(GetCapturedStderr(), "bad\n");
}
