// Hands out the physical lines of a device from large pieces, without copying them.
#include "trajectorylines.h"

#include <algorithm>

#include <QIODevice>

#include "linereading.h"

namespace {
constexpr std::size_t kLimit = std::size_t{kMaximumLineBytes};
constexpr std::size_t kPieceBytes = std::size_t{1} << 18; // small enough to stay in a processor's cache
} // namespace

TrajectoryLines::TrajectoryLines(QIODevice* device, bool isProcess)
    : device_(device), isProcess_(isProcess), ended_(!device->isOpen()),
      buffer_(std::make_unique_for_overwrite<char[]>(kLimit + kPieceBytes)), begin_(buffer_.get()), end_(begin_) {
    if (!ended_)
        device_->setTextModeEnabled(false);
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
    if (begin_ != buffer_.get()) {
        end_ = std::copy(begin_, end_, buffer_.get());
        begin_ = buffer_.get();
    }
    while (!ended_) {
        const qint64 length = device_->read(end_, static_cast<qint64>(kPieceBytes));
        if (length > 0) {
            sawUnusualBytes_ = sawUnusualBytes_ || !holdsOnlyPlainBytes({end_, static_cast<std::size_t>(length)});
            end_ += length;
            return true;
        }
        // A process that ends during the wait may leave a last piece.
        ended_ =
            !isProcess_ || (!device_->waitForReadyRead(kProcessWaitMilliseconds) && device_->bytesAvailable() == 0);
    }
    return false;
}

bool TrajectoryLines::holdsOnlyPlainBytes(std::string_view bytes) {
    // A maximum over all bytes and no early exit, so that the compiler looks at many bytes at a time.
    unsigned char highest = 0;
    for (const char c : bytes)
        highest = std::max(highest, static_cast<unsigned char>(c - 1));
    return highest < 0x7F;
}
