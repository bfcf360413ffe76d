// The TGA writer, byte by byte.
#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>

#include "inputfile.h"
#include "tgafile.h"

namespace {
using testing::ElementsAre;

class TgaFileTest : public testing::Test {
protected:
    TgaFileTest() {
        char pattern[] = "/tmp/tgafileXXXXXX";
        folder_ = mkdtemp(pattern);
    }
    ~TgaFileTest() override { std::filesystem::remove_all(folder_); }

    static std::vector<int> bytesOf(const std::string& path) {
        const auto contents = readInputFile(path, 1000);
        std::vector<int> bytes;
        for (const char c : contents.value_or(""))
            bytes.push_back(static_cast<unsigned char>(c));
        return bytes;
    }

    std::string folder_;
};

TEST_F(TgaFileTest, HeaderAndPixelsAreLittleEndianAndPacked) {
    const unsigned char pixels[] = {1, 2, 3, 253, 254, 255};
    TgaFile file;
    ASSERT_TRUE(file.Write(folder_ + "/a.tga", 2, 1, pixels));
    EXPECT_THAT(
        bytesOf(folder_ + "/a.tga"), ElementsAre(
                                         0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, /*width*/ 2, 0, /*height*/ 1, 0, 24, 0,
                                         /*pixels*/ 1, 2, 3, 253, 254, 255));
    // A second picture through the same object replaces the first; sides without pixels leave the header alone.
    ASSERT_TRUE(file.Write(folder_ + "/a.tga", 0x1234, 0, pixels));
    EXPECT_THAT(bytesOf(folder_ + "/a.tga"), ElementsAre(0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x34, 0x12, 0, 0, 24, 0));
}

TEST_F(TgaFileTest, OnlyAFileThatCannotBeOpenedIsAFailure) {
    const unsigned char pixels[] = {1, 2, 3};
    TgaFile file;
    EXPECT_FALSE(file.Write(folder_ + "/missing/a.tga", 1, 1, pixels));
    EXPECT_TRUE(file.Write("/dev/full", 1, 1, pixels));
}
} // namespace
