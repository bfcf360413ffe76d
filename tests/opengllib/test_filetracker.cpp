// The lines of a tracked file and the replacements of fgets and fclose.
#include "filetracker.h"

#include <cstdio>

#include "bodyfiles.h"
#include "inputfile.h"

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

// As the C library reads them.
std::vector<std::string> expectedLines(std::string text, int lineLength) {
    std::vector<std::string> lines;
    if (text.empty())
        return lines;
    const FileHandle stream(::fmemopen(text.data(), text.size(), "r"));
    std::vector<char> buffer(static_cast<std::size_t>(lineLength));
    while (std::fgets(buffer.data(), lineLength, stream.get()) != nullptr)
        lines.emplace_back(buffer.data());
    return lines;
}
} // namespace

TEST(FileTracker, SplitsTextAsTheLineReaderDoes) {
    for (const std::string& text :
         {std::string(), std::string("one\ntwo\n"), std::string("no line feed at the end"), std::string("\n\n\n"),
          std::string(255, 'y') + "\n" + std::string(300, 'z') + "\n", std::string("zero\0byte\nnext\n\0first\n", 22)})
        for (const int lineLength : {2, 3, 10, 256})
            EXPECT_EQ(linesOf(*trackerOf(text, lineLength)), expectedLines(text, lineLength)) << text << lineLength;
}

TEST(FileTracker, CopiesStartOverAndAssignmentsContinue) {
    const auto original = trackerOf("a\nb\nc\n", 9);
    original->setFileName("name");
    original->GetNext();

    FileTracker copy(*original);
    EXPECT_EQ(copy.lineLength(), 9);
    EXPECT_EQ(copy.fileName(), "name");

    FileTracker assigned;
    assigned = *original;
    EXPECT_EQ(assigned.position(), 1U);
    EXPECT_EQ(assigned.lineLength(), 256);
    EXPECT_EQ(assigned.fileName(), "name");

    assigned.AddLine("d");
    EXPECT_EQ(linesOf(assigned), (std::vector<std::string>{"b\n", "c\n", "d"}));
    EXPECT_EQ(linesOf(copy), (std::vector<std::string>{"a\n", "b\n", "c\n"}));
    EXPECT_EQ(copy.GetNext(), "");
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
