// A text file read whole into lines, and replacements of the C library's fgets and fclose that read it.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// The lines of a file with a cursor. Copies share the lines until one of them adds a line.
class FileTracker {
public:
    FileTracker() = default;
    // A copy starts at the first line, with the same line length.
    FileTracker(const FileTracker& other);
    // Takes over the cursor but keeps its own line length. The asymmetry with copying is deliberate: a copy is a fresh
    // reading of the file, an assignment the same one continued.
    FileTracker& operator=(const FileTracker& other);
    ~FileTracker() = default;

    // Whether every line has been handed out.
    bool AtEnd() const { return position_ == count(); }
    // The next line with its line feed, if it has one; empty at the end.
    std::string GetNext() { return std::string(nextLine()); }
    // GetNext without the copy; valid while the tracker lives and no line is added.
    std::string_view nextLine();
    void AddLine(const std::string& line);
    // Adds the lines that a line reader with a buffer of lineLength() bytes finds in `text`: a longer line is split,
    // and what follows a zero byte in a line is lost, as it is when the buffer is read as a C string.
    void addText(std::string text);

    // Lines not yet handed out.
    std::uint32_t remaining() const { return count() - position_; }
    std::uint32_t position() const { return position_; }
    const std::string& fileName() const { return fileName_; }
    void setFileName(const std::string& name) { fileName_ = name; }
    std::int32_t lineLength() const { return lineLength_; }
    void setLineLength(std::int32_t length) { lineLength_ = length; }

    // Texts of this size or more are refused, so that 32 bits number every byte and line.
    static constexpr std::uint64_t kMaximumBytes = 0xFFFFFFFFU;

private:
    struct Lines {
        std::string text;
        std::vector<std::uint32_t> ends; // where in the text each line ends
    };

    std::uint32_t count() const { return lines_ == nullptr ? 0 : static_cast<std::uint32_t>(lines_->ends.size()); }
    // The lines, no longer shared with other trackers.
    Lines& ownLines();

    std::uint32_t position_ = 0;
    std::shared_ptr<Lines> lines_;
    std::string fileName_;
    std::int32_t lineLength_ = 256;
};

// A copy of every tracker that was opened from disk, for the life of the process.
extern std::list<FileTracker> cache;

// Reads the regular file `path`, opened with `mode`, through a line buffer of `lineLength` bytes. The caller owns the
// tracker and hands it to fclose. Null, without a message, when the file can't be opened.
// The file name is deliberately left empty in the tracker and in its copy in the cache: a path that is opened again is
// read again, so that loaders see changed files, and only an empty path finds the cache's first entry.
FileTracker* fTrackerOpen(const char* path, const std::string& mode, int lineLength);

// A new copy, owned by the caller, of the first tracker of the cache with this file name; null when there is none.
FileTracker* InCache(const std::string& name);

// fgets for a tracker. A line that doesn't fit `size` with its closing zero is consumed, reported on standard output
// and answered with null, as the end is.
char* fgets(char* buffer, int size, FileTracker* tracker);

// Frees the tracker; null is ignored.
void fclose(FileTracker* tracker);

namespace sorvane {
struct FileTrackerCloser {
    void operator()(FileTracker* tracker) const { fclose(tracker); }
};
using FileTrackerHandle = std::unique_ptr<FileTracker, FileTrackerCloser>;
} // namespace sorvane
