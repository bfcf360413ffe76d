// Hands out the physical lines of a device from large pieces, without copying them.
#pragma once

#include <cstring>
#include <memory>
#include <string_view>

class QIODevice;

namespace sorvane {
// Reads on from where the device stands and switches its text mode off. With `isProcess`, waits for data as
// readUncommented does.
class TrajectoryLines {
public:
    TrajectoryLines(QIODevice* device, bool isProcess);

    // The next line without its line feed, cut to kMaximumLineBytes; valid until the next call. False at the end.
    bool next(std::string_view& line) {
        const auto* lineFeed = static_cast<const char*>(std::memchr(begin_, '\n', buffered()));
        if (lineFeed == nullptr)
            return nextAcrossPieces(line);
        line = take(lineFeed);
        return true;
    }

    // Whether a line from next() is plain text: no NUL and no byte above 0x7F.
    bool isPlain(std::string_view line) const { return !sawUnusualBytes_ || holdsOnlyPlainBytes(line); }

private:
    std::size_t buffered() const { return static_cast<std::size_t>(end_ - begin_); }
    std::string_view take(const char* lineFeed);
    bool nextAcrossPieces(std::string_view& line);
    bool readPiece();
    void makeRoom(std::size_t bytes);
    static bool holdsOnlyPlainBytes(std::string_view bytes);

    QIODevice* device_;
    bool isProcess_;
    bool ended_ = false;
    bool dropsRestOfLine_ = false;
    bool sawUnusualBytes_ = false;   // in any piece so far
    std::size_t pieceBytes_ = 1;     // asked of the device at a time; grows while that much comes
    std::unique_ptr<char[]> buffer_; // grows with the longest line
    std::size_t bufferBytes_ = 0;
    char* begin_ = nullptr; // what is buffered and not handed out
    char* end_ = nullptr;
};
} // namespace sorvane
