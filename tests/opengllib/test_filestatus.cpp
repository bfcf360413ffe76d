// The process-wide file-status table: when it probes the disk, what it remembers, and when it is emptied.
#include <gtest/gtest.h>

#include "file.h"
#include "temporarydirectory.h"

namespace {
class FileStatus : public testing::Test {
protected:
    FileStatus() {
        seen.clear();
        counter = 0;
    }
    ~FileStatus() override { seen.clear(); }

    static void fillTable(std::size_t rows) {
        seen.clear();
        for (std::size_t i = 0; i < rows; ++i)
            seen.push_back({"row" + std::to_string(i), 1, true});
    }

    TemporaryDirectory directory_;
};
} // namespace

TEST_F(FileStatus, ProbesAMissingFileOnce) {
    const std::string name = directory_.file("missing");
    EXPECT_EQ(File::Size(name, false), 0);
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].fileName, name);
    EXPECT_EQ(seen[0].size, 0);
    EXPECT_FALSE(seen[0].exists);
    EXPECT_EQ(counter, 1U);

    directory_.write("missing", "made later");
    EXPECT_EQ(File::Size(name, false), 0);
    EXPECT_EQ(File::Size(name, true), 0);
    EXPECT_FALSE(File::Exists(name));
    EXPECT_EQ(seen.size(), 1U);
    EXPECT_EQ(counter, 1U);
}

TEST_F(FileStatus, ProbesAnExistingFileOnceAndMeasuresItInItsRow) {
    const std::string name = directory_.write("file", "12345");
    EXPECT_TRUE(File::Exists(name));
    EXPECT_TRUE(File::Exists(name));
    EXPECT_EQ(File::Size(name, false), -1);
    EXPECT_EQ(counter, 1U);

    EXPECT_EQ(File::Size(name, true), 5);
    EXPECT_EQ(counter, 2U);
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].size, 5);

    std::filesystem::remove(name);
    EXPECT_EQ(File::Size(name, true), 5);
    EXPECT_EQ(File::Size(name, false), 5);
    EXPECT_TRUE(File::Exists(name));
    EXPECT_EQ(counter, 2U);
}

TEST_F(FileStatus, MeasuresAtTheFirstProbeWhenAsked) {
    EXPECT_EQ(File::Size(directory_.write("file", "123"), true), 3);
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_TRUE(seen[0].exists);
    EXPECT_EQ(counter, 1U);
}

TEST_F(FileStatus, AnEmptyFileExistsUntilItIsMeasured) {
    const std::string name = directory_.write("empty", "");
    EXPECT_TRUE(File::Exists(name));
    EXPECT_EQ(File::Size(name, true), 0);
    EXPECT_FALSE(File::Exists(name));
    EXPECT_TRUE(seen[0].exists);
}

TEST_F(FileStatus, AFileLostBeforeItWasMeasuredGetsASecondRowThatNobodyReads) {
    const std::string name = directory_.write("file", "123");
    EXPECT_TRUE(File::Exists(name));
    std::filesystem::remove(name);
    for (std::size_t probes = 2; probes <= 3; ++probes) {
        EXPECT_EQ(File::Size(name, true), 0);
        EXPECT_EQ(counter, probes);
        ASSERT_EQ(seen.size(), probes);
        EXPECT_FALSE(seen.back().exists);
        EXPECT_EQ(seen.back().size, 0);
    }
    EXPECT_TRUE(File::Exists(name));
    EXPECT_EQ(File::Size(name, false), -1);
}

TEST_F(FileStatus, TakesNamesAsTheyAreWritten) {
    directory_.write("file", "1");
    EXPECT_TRUE(File::Exists(directory_.file("file")));
    EXPECT_TRUE(File::Exists(directory_.file("./file")));
    EXPECT_EQ(seen.size(), 2U);
    EXPECT_FALSE(File::Exists(directory_.path().string())) << "a directory is not a file";
    EXPECT_FALSE(File::Exists(""));
}

TEST_F(FileStatus, IsEmptiedByANewExistingFileThatFindsMoreThan256Rows) {
    const std::string existing = directory_.write("file", "123");
    struct Row {
        std::size_t before;
        std::string name;
        bool measure;
        std::size_t after;
    };
    const Row rows[] = {
        {255, existing, false, 256},
        {256, existing, false, 257},
        {257, existing, false, 1},
        {257, existing, true, 1},
        {300, existing, true, 1},
        {257, directory_.file("missing"), false, 258},
        {300, directory_.file("missing"), true, 301},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::to_string(row.before) + " rows, then " + row.name);
        fillTable(row.before);
        File::Size(row.name, row.measure);
        EXPECT_EQ(seen.size(), row.after);
        EXPECT_EQ(seen.back().fileName, row.name);
    }
}

TEST_F(FileStatus, KeepsItsRowsWhenAKnownFileIsMeasured) {
    const std::string existing = directory_.write("file", "123");
    fillTable(256);
    EXPECT_TRUE(File::Exists(existing));
    ASSERT_EQ(seen.size(), 257U);
    EXPECT_EQ(File::Size(existing, true), 3);
    EXPECT_EQ(seen.size(), 257U);
}

TEST(HasSeen, FindsTheFirstRowOfExactlyThatName) {
    const std::vector<fileTrackingInfo> table = {{"a", 1, true}, {"ab", 2, true}, {"AB", 3, true}, {"ab", 4, true}};
    EXPECT_EQ(hasSeen(table, "ab"), 1);
    EXPECT_EQ(hasSeen(table, "AB"), 2);
    EXPECT_EQ(hasSeen(table, "b"), -1);
    EXPECT_EQ(hasSeen(table, ""), -1);
    EXPECT_EQ(hasSeen(table, std::string("a\0", 2)), -1);
    EXPECT_EQ(hasSeen({}, "a"), -1);
}

TEST(File, IsMadeEmptyOrWithAName) {
    EXPECT_EQ(File().Name(), "");
    EXPECT_EQ(File("a.vnl").Name(), "a.vnl");
}
