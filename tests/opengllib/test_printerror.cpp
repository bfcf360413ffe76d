// The error line, to the letter, and the one way to end the process.
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <stdexcept>

#include <gtest/gtest.h>

#include "endprocess.h"
#include "fail.h"
#include "printerror.h"
#include "temporarydirectory.h"

using namespace sorvane;

using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

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

TEST(EndProcess, CanBeCaughtThroughAHandlerThatThrows) {
    const EndProcessHandler thrower = [] {
        throw std::runtime_error("ended");
    };
    EXPECT_EQ(setEndProcessHandler(thrower), nullptr);
    EXPECT_THROW(endProcess(), std::runtime_error);
    EXPECT_EQ(setEndProcessHandler(nullptr), thrower);
}
