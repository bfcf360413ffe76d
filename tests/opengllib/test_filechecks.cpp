// The free-standing file checks and their messages on standard output.
#include <gtest/gtest.h>

#include "file.h"
#include "filechecks.h"
#include "temporarydirectory.h"

using testing::internal::CaptureStderr;
using testing::internal::CaptureStdout;
using testing::internal::GetCapturedStderr;
using testing::internal::GetCapturedStdout;

namespace {
class FileChecks : public testing::Test {
protected:
    FileChecks() { seen.clear(); }
    ~FileChecks() override { seen.clear(); }

    TemporaryDirectory directory_;
};
} // namespace

TEST_F(FileChecks, SayWhichFileWasNotFound) {
    const std::string existing = directory_.write("here", "");
    const std::string missing = directory_.file("missing");
    struct Row {
        std::string name;
        std::string message;
        bool result;
        std::string output;
    };
    const Row rows[] = {
        {existing, "", true, ""},
        {existing, "unused", true, ""},
        {missing, "", false, "File " + missing + " was not found.\n"},
        {missing, "needed for %s", false, "File " + missing + " was not found: needed for %s\n"},
        {"aster::alpha", "", false, ""},
        {"aster::alpha", "ignored", false, ""},
        {"::", "", false, ""},
        {"a:b", "", false, "File a:b was not found.\n"},
        {"", "", false, "File  was not found.\n"},
        {"", "why", false, "File  was not found: why\n"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name + ", " + row.message);
        CaptureStdout();
        CaptureStderr();
        EXPECT_EQ(CheckFileExistance(row.name, row.message), row.result);
        EXPECT_EQ(GetCapturedStdout(), row.output);
        EXPECT_EQ(FileExists(row.name), row.result);
        if (row.message.empty()) {
            CaptureStdout();
            EXPECT_EQ(CheckFileExistence(row.name), row.result);
            EXPECT_EQ(GetCapturedStdout(), row.output);
        }
        EXPECT_EQ(GetCapturedStderr(), "");
    }
}

TEST_F(FileChecks, AskTheStatusTableAndNotTheDisk) {
    const std::string name = directory_.write("file", "contents");
    EXPECT_TRUE(FileExists(name));
    std::filesystem::remove(name);
    EXPECT_TRUE(FileExists(name));
    seen.clear();
    EXPECT_FALSE(FileExists(name));
}

TEST_F(FileChecks, EmptyAFileThatTheyFindWritable) {
    const std::string existing = directory_.write("existing", "contents");
    const std::string fresh = directory_.file("fresh");
    CaptureStdout();
    EXPECT_TRUE(FileWritable(existing));
    EXPECT_TRUE(CheckFileWritable(fresh));
    EXPECT_EQ(GetCapturedStdout(), "");
    EXPECT_EQ(std::filesystem::file_size(existing), 0U);
    EXPECT_TRUE(std::filesystem::exists(fresh));
}

TEST_F(FileChecks, SayWhichFileCanNotBeWritten) {
    const std::string unwritable = directory_.file("missing/file");
    CaptureStdout();
    EXPECT_FALSE(FileWritable(unwritable));
    EXPECT_EQ(GetCapturedStdout(), "");
    CaptureStdout();
    EXPECT_FALSE(CheckFileWritable(unwritable));
    EXPECT_EQ(GetCapturedStdout(), "File " + unwritable + " can not be written to.\n");
}

TEST(CheckExtension, ComparesTheEndOfTheNameExactly) {
    struct Row {
        std::string name;
        std::string extension;
        bool result;
    };
    const Row rows[] = {
        {"tile.hdr", "hdr", true},    {"tile.HDR", "hdr", false},  {"hdr", "hdr", false},  {"dr", "hdr", false},
        {".hdr", "hdr", true},        {"tilehdr", "hdr", false},   {"xhdr", "hdr", false}, {"tile.hdr", ".hdr", false},
        {"tile..hdr", ".hdr", true},  {"tile.", "", true},         {"tile", "", false},    {"", "", false},
        {"a.tar.gz", "tar.gz", true}, {"tile.hdr ", "hdr", false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(checkExtension(row.name, row.extension), row.result) << row.name << " with " << row.extension;
}
