// Who gets the library's messages.
#include "messages.h"

#include <gmock/gmock.h>

#include "printerror.h"

using namespace sorvane;

namespace {
using testing::ElementsAre;
using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

std::vector<std::string> textsOf(const MessageCollection& collection) {
    std::vector<std::string> texts;
    for (const Message& message : collection.messages())
        texts.push_back((message.isError ? "error: " : "") + message.text);
    return texts;
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
} // namespace
