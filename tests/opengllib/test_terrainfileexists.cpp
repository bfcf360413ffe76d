// The terrain code's existence check shares the status table with the others.
#include <gtest/gtest.h>

#include "file.h"
#include "temporarydirectory.h"
#include "terrainfileexists.h"

TEST(TerrainFileExists, AnswersFromTheStatusTable) {
    seen.clear();
    const TemporaryDirectory directory;
    const std::string name = directory.write("tile.top", "");
    EXPECT_TRUE(FileExists(name));
    File::Size(name, true);
    EXPECT_FALSE(FileExists(name)) << "a measured empty file does not exist";
    EXPECT_FALSE(FileExists(directory.file("missing")));
    EXPECT_EQ(seen.size(), 2U);
    seen.clear();
}
