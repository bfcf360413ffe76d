// Hands out the physical lines of a device from large pieces, without copying them.
#include "trajectorylines.h"

#include <algorithm>
#include <utility>

#include <QIODevice>

#include "linereading.h"

namespace sorvane {
namespace {
constexpr std::size_t kLimit = std::size_t{kMaximumLineBytes};
constexpr std::size_t kPieceBytes = std::size_t{1} << 18; // small enough to stay in a processor's cache
constexpr std::size_t kSmallestPieceBytes = 4096;
} // namespace

TrajectoryLines::TrajectoryLines(QIODevice* device, bool isProcess)
    : device_(device), isProcess_(isProcess), ended_(!device->isOpen()) {
    if (!ended_) {
        device_->setTextModeEnabled(false);
        pieceBytes_ = std::clamp(static_cast<std::size_t>(device_->bytesAvailable()), kSmallestPieceBytes, kPieceBytes);
    }
    makeRoom(pieceBytes_);
}

std::string_view TrajectoryLines::take(const char* lineFeed) {
    const std::string_view line(begin_, static_cast<std::size_t>(lineFeed - begin_));
    begin_ += line.size() + 1;
    return line.substr(0, kLimit);
}

bool TrajectoryLines::nextAcrossPieces(std::string_view& line) {
    while (true) {
        const std::size_t searched = buffered();
        if (!dropsRestOfLine_ && searched >= kLimit) {
            line = {begin_, kLimit};
            begin_ = end_;
            dropsRestOfLine_ = true;
            return true;
        }
        if (dropsRestOfLine_)
            begin_ = end_;
        if (!readPiece())
            break;
        const std::size_t from = dropsRestOfLine_ ? 0 : searched;
        const auto* lineFeed = static_cast<const char*>(std::memchr(begin_ + from, '\n', buffered() - from));
        if (lineFeed == nullptr)
            continue;
        if (!dropsRestOfLine_) {
            line = take(lineFeed);
            return true;
        }
        begin_ += lineFeed + 1 - begin_;
        dropsRestOfLine_ = false;
        return next(line);
    }
    line = {begin_, buffered()};
    begin_ = end_;
    return !line.empty();
}

bool TrajectoryLines::readPiece() {
    if (!ended_)
        makeRoom(pieceBytes_);
    while (!ended_) {
        const qint64 length = device_->read(end_, static_cast<qint64>(pieceBytes_));
        if (length > 0) {
            sawUnusualBytes_ = sawUnusualBytes_ || !holdsOnlyPlainBytes({end_, static_cast<std::size_t>(length)});
            end_ += length;
            if (static_cast<std::size_t>(length) == pieceBytes_)
                pieceBytes_ = std::min(2 * pieceBytes_, kPieceBytes);
            return true;
        }
        // A process that ends during the wait may leave a last piece.
        ended_ =
            !isProcess_ || (!device_->waitForReadyRead(kProcessWaitMilliseconds) && device_->bytesAvailable() == 0);
    }
    return false;
}

// Moves what is buffered to the front of a buffer that has room for so many bytes behind it.
void TrajectoryLines::makeRoom(std::size_t bytes) {
    const std::size_t kept = buffered();
    std::unique_ptr<char[]> outgrown;
    if (kept + bytes > bufferBytes_) {
        bufferBytes_ = std::max(2 * kept, kept + bytes);
        outgrown = std::exchange(buffer_, std::make_unique_for_overwrite<char[]>(bufferBytes_));
    }
    end_ = std::copy(begin_, end_, buffer_.get());
    begin_ = buffer_.get();
}

bool TrajectoryLines::holdsOnlyPlainBytes(std::string_view bytes) {
    // A maximum over all bytes and no early exit, so that the compiler looks at many bytes at a time.
    unsigned char highest = 0;
    for (const char c : bytes)
        highest = std::max(highest, static_cast<unsigned char>(c - 1));
    return highest < 0x7F;
}
} // namespace sorvane
