// The progress bar.
#include <sstream>
#include <thread>

#include <gmock/gmock.h>

#include "progressbar.h"

namespace {
using testing::HasSubstr;

TEST(ProgressBar, ShowsHowMuchIsDone) {
    EXPECT_EQ(
        progressLine(5, 10, "files"),
        std::string("[") + std::string(20, '#') + std::string(20, ' ') + "]  50 %, 5 of 10 files");
    EXPECT_EQ(progressLine(0, 0, "files"), std::string("[") + std::string(40, ' ') + "]   0 %, 0 of 0 files");
    EXPECT_EQ(progressLine(7, 7, "frames"), std::string("[") + std::string(40, '#') + "] 100 %, 7 of 7 frames");
}

TEST(ProgressBar, AppearsOnATerminalWhenTheWorkIsLong) {
    for (const bool isTerminal : {true, false}) {
        std::ostringstream out;
        std::ostringstream err;
        {
            ProgressBar bar(Streams{out, err, isTerminal}, 4, "files");
            bar.show(1);
            EXPECT_EQ(err.str(), "");
            std::this_thread::sleep_for(std::chrono::milliseconds(550));
            bar.show(2);
        }
        EXPECT_EQ(out.str(), "");
        if (isTerminal)
            EXPECT_THAT(err.str(), testing::AllOf(HasSubstr("2 of 4 files"), testing::EndsWith("\r\x1b[K")));
        else
            EXPECT_EQ(err.str(), "");
    }
}
} // namespace
