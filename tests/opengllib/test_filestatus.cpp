// The process-wide file-status table and the free-standing checks that ask it.
#include <gtest/gtest.h>

#include "capturedoutput.h"
#include "file.h"
#include "filechecks.h"
#include "rows.h"
#include "temporarydirectory.h"

using namespace sorvane;

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
using FileChecks = FileStatus;
} // namespace

TEST_F(FileStatus, ProbesAMissingFileOnce) {
    const std::string name = directory_.file("missing");
    EXPECT_EQ(File::Size(name, false), 0);
    directory_.write("missing", "made later");
    EXPECT_EQ(File::Size(name, false), 0);
    EXPECT_EQ(File::Size(name, true), 0);
    EXPECT_FALSE(File::Exists(name));
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_EQ(seen[0].fileName, name);
    EXPECT_FALSE(seen[0].exists);
    EXPECT_EQ(counter, 1U);
}

TEST_F(FileStatus, ProbesAnExistingFileOnceAndMeasuresItInItsRow) {
    const std::string name = directory_.write("file", "12345");
    fillTable(256);
    EXPECT_TRUE(File::Exists(name));
    EXPECT_TRUE(File::Exists(name));
    EXPECT_EQ(File::Size(name, false), -1);
    EXPECT_EQ(counter, 1U);
    EXPECT_EQ(File::Size(name, true), 5);
    EXPECT_EQ(counter, 2U);
    ASSERT_EQ(seen.size(), 257U) << "a known file empties nothing";
    EXPECT_EQ(seen[256].size, 5);

    std::filesystem::remove(name);
    EXPECT_EQ(File::Size(name, true), 5);
    EXPECT_EQ(File::Size(name, false), 5);
    EXPECT_TRUE(File::Exists(name));
    EXPECT_EQ(counter, 2U);
    EXPECT_EQ(File::Size(directory_.write("other", "123"), true), 3) << "measured at the first probe";
    EXPECT_EQ(counter, 3U);
}

TEST_F(FileStatus, AnEmptyFileExistsUntilItIsMeasuredAndADirectoryDoesNot) {
    const std::string name = directory_.write("empty", "");
    EXPECT_TRUE(File::Exists(name));
    EXPECT_EQ(File::Size(name, true), 0);
    EXPECT_FALSE(File::Exists(name));
    EXPECT_TRUE(seen[0].exists);
    EXPECT_FALSE(File::Exists(directory_.path().string()));
}

TEST_F(FileStatus, IsEmptiedByANewExistingFileThatFindsMoreThan256Rows) {
    const std::string existing = directory_.write("file", "123");
    const std::string missing = directory_.file("missing");
    for (const auto& [before, name, measure, after] : Rows<std::size_t, std::string, bool, std::size_t>{
             {256, existing, false, 257}, {257, existing, true, 1}, {257, missing, false, 258}}) {
        fillTable(before);
        File::Size(name, measure);
        EXPECT_EQ(seen.size(), after) << before << " rows, then " << name;
        EXPECT_EQ(seen.back().fileName, name);
    }
}

TEST_F(FileChecks, SayWhichFileWasNotFound) {
    const std::string missing = directory_.file("missing");
    for (const auto& [name, message, result, output] : Rows<std::string, std::string, bool, std::string>{
             {directory_.write("here", ""), "unused", true, ""},
             {missing, "", false, "File " + missing + " was not found.\n"},
             {missing, "needed for %s", false, "File " + missing + " was not found: needed for %s\n"},
             {"aster::alpha", "ignored", false, ""},
             {"a:b", "", false, "File a:b was not found.\n"},
             {"", "", false, "File  was not found.\n"}}) {
        const std::string printed = outputOf([&name = name, &message = message, &result = result] {
            EXPECT_EQ(CheckFileExistance(name, message), result);
        });
        EXPECT_EQ(printed, output);
        EXPECT_EQ(FileExists(name), result) << name;
    }
    EXPECT_EQ(outputOf([&] { EXPECT_FALSE(CheckFileExistence(missing)); }), "File " + missing + " was not found.\n");
    directory_.write("missing", "now");
    EXPECT_FALSE(FileExists(missing)) << "the table is asked and not the disk";
}

TEST_F(FileChecks, EmptyAFileThatTheyFindWritable) {
    const std::string existing = directory_.write("existing", "contents");
    const std::string unwritable = directory_.file("missing/file");
    EXPECT_EQ(
        outputOf([&] {
            EXPECT_TRUE(FileWritable(existing));
            EXPECT_TRUE(CheckFileWritable(directory_.file("fresh")));
            EXPECT_FALSE(CheckFileWritable(unwritable));
        }),
        "File " + unwritable + " can not be written to.\n");
    EXPECT_EQ(std::filesystem::file_size(existing), 0U);
    EXPECT_TRUE(std::filesystem::exists(directory_.file("fresh")));
}

TEST(CheckExtension, ComparesTheEndOfTheNameExactly) {
    for (const auto& [name, extension, result] : Rows<const char*, const char*, bool>{
             {"a.tar.gz", "tar.gz", true},
             {"tile.HDR", "hdr", false},
             {"hdr", "hdr", false},
             {"tilehdr", "hdr", false},
             {"tile.", "", true},
             {"", "", false}})
        EXPECT_EQ(checkExtension(name, extension), result) << name << " with " << extension;
}
