// The image utilities: upside down, float to grey, snapshots, the TGA writer, clamping.
#include <gmock/gmock.h>

#include <limits>

#include "capturedoutput.h"
#include "temporarydirectory.h"
#include "tgafile.h"
#include "utils.h"

using namespace sorvane;

namespace {
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::ExitedWithCode;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(SwapRowOrder, ExchangesRowsAndKeepsAMiddleOne) {
    std::vector<float> even = {1, 2, 3, 4};
    SwapRowOrder(1, 4, even.data());
    EXPECT_THAT(even, ElementsAre(4, 3, 2, 1));
    std::vector<float> odd = {1, 2, 3, 4, 5, 6};
    SwapRowOrder(2, 3, odd.data());
    EXPECT_THAT(odd, ElementsAre(5, 6, 3, 4, 1, 2));
    SwapRowOrder(6, 1, odd.data());
    SwapRowOrder(6, 0, odd.data());
    EXPECT_THAT(odd, ElementsAre(5, 6, 3, 4, 1, 2));
}

TEST(SwapRowOrder, TakesRowsOfBytesAtAnyAddress) {
    std::string bytes = "xupper row of 21 bytes/lower row of 21 bytes.";
    SwapRowOrderChar(22, 2, bytes.data() + 1);
    EXPECT_EQ(bytes, "xlower row of 21 bytes.upper row of 21 bytes/");
}

TEST(Float32ToRGB8, TruncatesAndSaturates) {
    const std::vector<float> source = {0.0F, 0.999F, 1.0F, 1.0001F, -0.1F, kNan, kInfinity, -kInfinity, -0.0F, 0.5F};
    std::vector<unsigned char> grey(3 * source.size());
    Float32ToRGB8(source.data(), grey.data(), source.size(), 1, source.size(), 1);
    std::vector<int> expected;
    for (const int level : {0, 254, 255, 255, 0, 0, 255, 0, 0, 127})
        expected.insert(expected.end(), 3, level);
    EXPECT_THAT(grey, ElementsAreArray(expected));
}

TEST(Float32ToRGB8, LargerDestinationEndsTheProgram) {
    const std::vector<float> source(4);
    std::vector<unsigned char> grey(100);
    EXPECT_EXIT(
        Float32ToRGB8(source.data(), grey.data(), 2, 2, 3, 3), ExitedWithCode(1),
        "^Error in function \"Float32ToRGB8\" of file \"opengllib/utils.cpp\" \\(line #[0-9]+\\): Destination width "
        "must be less than source width, but dest_width = 3 and source_width = 2\n$");
    EXPECT_EXIT(
        Float32ToRGB8(source.data(), grey.data(), 2, 2, 2, 3), ExitedWithCode(1),
        "Destination height must be less than source height, but dest_height = 3 and source_height = 2\n$");
}

TEST(Snapshot, WritesAGreyTgaOfTheFirstRowsAndColumns) {
    const TemporaryDirectory directory;
    const std::vector<float> source = {0.2F, 9.0F, 0.6F, 9.0F, 9.0F, 9.0F};
    EXPECT_TRUE(Snapshot(source.data(), directory.file("a.tga"), 2, 3, 1, 2));
    EXPECT_EQ(
        readWholeFile(directory.file("a.tga")),
        std::string("\0\0\2\0\0\0\0\0\0\0\0\0\1\0\2\0\30\0", 18) + "\63\63\63\231\231\231");
}

TEST(Snapshot, OnlyLackOfMemoryIsAFailure) {
    const float value = 0.5F;
    EXPECT_EQ(
        outputOf([&] { EXPECT_TRUE(Snapshot(&value, "/dev/null/a.tga", 1, 1, 1, 1)); }),
        "FboTerrain::Snapshot: Error writing snapshot file.\n");
    constexpr unsigned long kHuge = (1UL << 62) + 1; // three times of it, in the int of the message, is 3
    EXPECT_EQ(
        outputOf([&] { EXPECT_FALSE(Snapshot(&value, "/dev/null/a.tga", kHuge, 1, kHuge, 1)); }),
        errorLine(
            "Snapshot", "opengllib/utils.cpp", "Could not allocate 3 unsigned chars (3 bytes) for array pBytes."));
}

TEST(TgaFile, HeaderAndPixelsAreLittleEndianAndPacked) {
    const TemporaryDirectory directory;
    const std::string path = directory.file("a.tga");
    const unsigned char pixels[] = {1, 2, 3, 253, 254, 255};
    const std::string begin("\0\0\2\0\0\0\0\0\0\0\0\0", 12);
    TgaFile file;
    ASSERT_TRUE(file.Write(path, 2, 1, pixels));
    EXPECT_EQ(readWholeFile(path), begin + std::string("\2\0\1\0\30\0\1\2\3\375\376\377", 12));
    // A second picture through the same object replaces the first; sides without pixels leave the header alone.
    ASSERT_TRUE(file.Write(path, 0x1234, 0, pixels));
    EXPECT_EQ(readWholeFile(path), begin + std::string("\x34\x12\0\0\30\0", 6));
    // Only a file that can't be opened is a failure.
    EXPECT_FALSE(file.Write(directory.file("missing/a.tga"), 1, 1, pixels));
    EXPECT_TRUE(file.Write("/dev/full", 1, 1, pixels));
}

TEST(ClampToRange, LimitsToTheRange) {
    EXPECT_EQ(ClampToRange(5, 0, 1), 1);
    EXPECT_EQ(ClampToRange(-5, 0, 1), 0);
    EXPECT_EQ(ClampToRange(0.25F, 0, 1), 0.25F);
    EXPECT_EQ(ClampToRange(7, 2, 2), 2);
    EXPECT_EXIT(
        ClampToRange(0.5F, 1, 0), ExitedWithCode(1),
        "Parameters must satisfy x1 <= x2, but x1 = 1.000000 and x2 = 0.000000\n$");
}
} // namespace
