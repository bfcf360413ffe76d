// A text file read whole into lines, and replacements of the C library's fgets and fclose that read it.
#include "filetracker.h"

#include <algorithm>
#include <cstdio>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

#include "inputfile.h"
#include "messages.h"

using namespace sorvane;

std::list<FileTracker> cache;

namespace {
// The line of the report of an overlong line is part of its text.
constexpr int kReportedLine = 108;

std::optional<std::string> readWhole(const std::string& path, const std::string& mode) {
    const int descriptor = openRegularFile(path);
    if (descriptor < 0)
        return std::nullopt;
    struct stat status {};
    const bool isMeasured = ::fstat(descriptor, &status) == 0;
    const FileHandle stream(::fdopen(descriptor, mode.c_str()));
    if (stream == nullptr) {
        ::close(descriptor);
        return std::nullopt;
    }
    if (!isMeasured || static_cast<std::uint64_t>(status.st_size) >= FileTracker::kMaximumBytes)
        return std::nullopt;
    std::string text(static_cast<std::size_t>(status.st_size), '\0');
    text.resize(std::fread(text.data(), 1, text.size(), stream.get()));
    return text;
}
} // namespace

FileTracker::FileTracker(const FileTracker& other)
    : lines_(other.lines_), fileName_(other.fileName_), lineLength_(other.lineLength_) {}

// Assigning a tracker to itself leaves every member as it is; the line length is left out on purpose.
// cppcheck-suppress operatorEqVarError
// NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
FileTracker& FileTracker::operator=(const FileTracker& other) {
    position_ = other.position_;
    lines_ = other.lines_;
    fileName_ = other.fileName_;
    return *this;
}

std::string_view FileTracker::nextLine() {
    if (AtEnd())
        return {};
    const std::uint32_t start = position_ == 0 ? 0 : lines_->ends[position_ - 1];
    const std::uint32_t end = lines_->ends[position_];
    ++position_;
    return std::string_view(lines_->text).substr(start, end - start);
}

FileTracker::Lines& FileTracker::ownLines() {
    if (lines_ == nullptr)
        lines_ = std::make_shared<Lines>();
    else if (lines_.use_count() > 1)
        lines_ = std::make_shared<Lines>(*lines_);
    return *lines_;
}

void FileTracker::AddLine(const std::string& line) {
    Lines& lines = ownLines();
    lines.text += line;
    lines.ends.push_back(static_cast<std::uint32_t>(lines.text.size()));
}

void FileTracker::addText(std::string text) {
    const std::size_t longest = static_cast<std::size_t>(std::max(lineLength_, 2)) - 1;
    const bool isPlain = count() == 0 && text.find('\0') == std::string::npos;
    Lines& lines = ownLines();
    constexpr std::size_t kUsualLineLength = 32;
    lines.ends.reserve(lines.ends.size() + text.size() / kUsualLineLength);
    for (std::size_t start = 0; start < text.size();) {
        const std::string_view reach = std::string_view(text).substr(start, longest);
        const std::size_t lineFeed = reach.find('\n');
        const std::size_t length = lineFeed == std::string_view::npos ? reach.size() : lineFeed + 1;
        if (isPlain)
            lines.ends.push_back(static_cast<std::uint32_t>(start + length));
        else
            AddLine(std::string(reach.substr(0, std::min(length, reach.find('\0')))));
        start += length;
    }
    if (isPlain)
        lines.text = std::move(text);
}

FileTracker* fTrackerOpen(const char* path, const std::string& mode, int lineLength) {
    if (FileTracker* const cached = InCache(path))
        return cached;
    if (lineLength < 2)
        return nullptr;
    try {
        std::optional<std::string> text = readWhole(path, mode);
        if (!text)
            return nullptr;
        FileTrackerHandle tracker(new FileTracker);
        tracker->setLineLength(lineLength);
        tracker->addText(*std::move(text));
        cache.push_back(*tracker);
        return tracker.release();
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

FileTracker* InCache(const std::string& name) {
    const auto found = std::find_if(
        cache.begin(), cache.end(), [&name](const FileTracker& tracker) { return tracker.fileName() == name; });
    if (found == cache.end())
        return nullptr;
    try {
        return new FileTracker(*found);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

char* fgets(char* buffer, int size, FileTracker* tracker) {
    if (tracker->AtEnd())
        return nullptr;
    const std::string_view line = tracker->nextLine();
    const int length = static_cast<int>(line.size());
    if (size <= length) {
        printMessage("%s::%s:%d: not enough space to copy %d vs %d", __FILE__, "fgets", kReportedLine, size, length);
        return nullptr;
    }
    line.copy(buffer, line.size());
    buffer[line.size()] = '\0';
    return buffer;
}

void fclose(FileTracker* tracker) {
    delete tracker;
}
