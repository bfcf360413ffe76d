// Lines from memory and of tracked files, which are those that fgets reads, and the replacements of fgets and fclose.
#include "filetracker.h"

#include <cstdio>

#include "bodyfiles.h"
#include "inputfile.h"
#include "textlines.h"

using namespace sorvane;

namespace {
FileTrackerHandle trackerOf(const std::string& text, int lineLength = 256) {
    FileTrackerHandle tracker(new FileTracker);
    tracker->setLineLength(lineLength);
    tracker->addText(text);
    return tracker;
}

std::vector<std::string> linesOf(FileTracker& tracker) {
    std::vector<std::string> lines;
    while (!tracker.AtEnd())
        lines.push_back(tracker.GetNext());
    return lines;
}

using Buffers = std::vector<std::string>; // what was in the whole buffer after each line

Buffers linesFromFile(const std::string& text, std::size_t size) {
    const FileHandle stream(std::tmpfile());
    std::fwrite(text.data(), 1, text.size(), stream.get());
    std::rewind(stream.get());
    Buffers lines;
    std::string buffer(size, '~');
    while (std::fgets(buffer.data(), static_cast<int>(size), stream.get()) != nullptr) {
        lines.push_back(buffer);
        buffer.assign(size, '~');
    }
    return lines;
}

Buffers linesFromMemory(const std::string& text, std::size_t size) {
    TextLines lines(text);
    Buffers result;
    std::string buffer(size, '~');
    while (lines.getLine(buffer.data(), size)) {
        result.push_back(buffer);
        buffer.assign(size, '~');
    }
    EXPECT_EQ(buffer, std::string(size, '~')) << "the buffer is left alone at the end";
    return result;
}

const std::string kTexts[] = {
    "",
    "\n\n",
    "one\r\ntwo",
    "1234567\n8",
    "12345678\n9",
    "long line that is split over and over\nnext\n",
    std::string(255, 'y') + "\n" + std::string(300, 'z') + "\n",
    std::string("nul\0inside\n\0first\nend\0", 22)};
} // namespace

TEST(FileTracker, SplitsTextAsTheLineReaderDoes) {
    for (const std::string& text : kTexts)
        for (const std::size_t size : {2U, 3U, 8U, 9U, 256U}) {
            EXPECT_EQ(linesFromMemory(text, size), linesFromFile(text, size)) << text << ", buffer of " << size;
            std::vector<std::string> expected;
            for (const std::string& buffer : linesFromFile(text, size))
                expected.emplace_back(buffer.c_str());
            EXPECT_EQ(linesOf(*trackerOf(text, static_cast<int>(size))), expected) << text << ", buffer of " << size;
        }
}

TEST(TextLines, GivesNothingIntoABufferWithoutRoom) {
    TextLines lines("text\n");
    char buffer[2] = {'~', '~'};
    EXPECT_FALSE(lines.getLine(buffer, 0));
    EXPECT_FALSE(lines.getLine(buffer, 1));
    EXPECT_EQ(buffer[0], '~');
}

TEST(FileTracker, CopiesStartOverAndAssignmentsContinue) {
    const auto original = trackerOf("a\nb\nc\n", 9);
    original->setFileName("name");
    original->GetNext();

    FileTracker copy(*original);
    EXPECT_EQ(copy.lineLength(), 9);

    FileTracker assigned;
    assigned = *original;
    EXPECT_EQ(assigned.lineLength(), 256);

    assigned.AddLine("d");
    EXPECT_EQ(linesOf(assigned), (std::vector<std::string>{"b\n", "c\n", "d"}));
    EXPECT_EQ(linesOf(copy), (std::vector<std::string>{"a\n", "b\n", "c\n"}));
    EXPECT_EQ(copy.fileName() + copy.GetNext(), "name");
}

TEST(FileTracker, FgetsConsumesAndReportsALineThatDoesNotFit) {
    const auto tracker = trackerOf("12345\nnext\n");
    char buffer[16];
    testing::internal::CaptureStdout();
    EXPECT_EQ(fgets(buffer, 6, tracker.get()), nullptr);
    EXPECT_EQ(
        testing::internal::GetCapturedStdout(),
        "opengllib/filetracker.cpp::fgets:108: not enough space to copy 6 vs 6\n");
    EXPECT_EQ(fgets(buffer, 6, tracker.get()), buffer);
    EXPECT_STREQ(buffer, "next\n");
    EXPECT_EQ(fgets(buffer, 6, tracker.get()), nullptr);
}

TEST(FileTracker, EveryOpenReadsTheFileAndLeavesANamelessCopy) {
    const TemporaryFile file("first\n");
    cache.clear();
    fclose(fTrackerOpen(file.path().c_str(), "r", 256));
    file.write("second\n");
    const FileTrackerHandle again(fTrackerOpen(file.path().c_str(), "r", 256));
    EXPECT_EQ(again->GetNext(), "second\n");
    EXPECT_EQ(InCache(file.path()), nullptr);
    const FileTrackerHandle nameless(fTrackerOpen("", "r", 256));
    EXPECT_EQ(nameless->GetNext(), "first\n");
    EXPECT_EQ(cache.size(), 2U);

    EXPECT_EQ(fTrackerOpen("/no/such/file", "r", 256), nullptr);
    EXPECT_EQ(fTrackerOpen(testing::TempDir().c_str(), "r", 256), nullptr);
    EXPECT_EQ(fTrackerOpen(file.path().c_str(), "r", 1), nullptr);
    EXPECT_EQ(fTrackerOpen(file.path().c_str(), "w", 256), nullptr);
    EXPECT_EQ(cache.size(), 2U);
    EXPECT_EQ(std::filesystem::file_size(file.path()), 7U) << "opening to write empties nothing";
    FileTracker* const none = nullptr;
    fclose(none);
    cache.clear();
}
