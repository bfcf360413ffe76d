// The progress bar.
#include <sstream>

#include <gmock/gmock.h>

#include "progressbar.h"

using namespace sorvane;

namespace {
using testing::HasSubstr;
using testing::Not;

TEST(ProgressBar, ShowsHowMuchIsDone) {
    EXPECT_EQ(
        progressLine(5, 10, "files"),
        std::string("[") + std::string(20, '#') + std::string(20, ' ') + "]  50 %, 5 of 10 files");
    EXPECT_EQ(
        progressLine(1, 3, "files"),
        std::string("[") + std::string(13, '#') + std::string(27, ' ') + "]  33 %, 1 of 3 files");
    EXPECT_EQ(progressLine(0, 0, "files"), std::string("[") + std::string(40, ' ') + "]   0 %, 0 of 0 files");
    EXPECT_EQ(progressLine(7, 7, "frames"), std::string("[") + std::string(40, '#') + "] 100 %, 7 of 7 frames");
}

ProgressBar::Clock::time_point theTime;

TEST(ProgressBar, AppearsOnATerminalWhenTheWorkIsLong) {
    for (const bool isTerminal : {true, false}) {
        std::ostringstream out;
        std::ostringstream err;
        {
            ProgressBar bar(Streams{out, err, isTerminal}, 4, "files", [] { return theTime; });
            theTime += std::chrono::milliseconds(499);
            bar.show(1);
            EXPECT_EQ(err.str(), "");
            theTime += std::chrono::milliseconds(1);
            bar.show(2);
            theTime += std::chrono::milliseconds(99);
            bar.show(3); // too soon after the last
        }
        EXPECT_EQ(out.str(), "");
        if (isTerminal)
            EXPECT_THAT(
                err.str(),
                testing::AllOf(HasSubstr("2 of 4 files"), testing::EndsWith("\r\x1b[K"), Not(HasSubstr("3 of 4"))));
        else
            EXPECT_EQ(err.str(), "");
    }
}
} // namespace
