// The TGA writer, byte by byte.
#include <gtest/gtest.h>

#include "temporarydirectory.h"
#include "tgafile.h"

using namespace sorvane;

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
