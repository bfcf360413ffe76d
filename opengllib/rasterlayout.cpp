// Where the samples of a raster lie in its file.
#include "rasterlayout.h"

#include <algorithm>
#include <limits>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>
#include <vector>

namespace sorvane {
namespace {
constexpr std::int64_t kHeaderBytes = 512;
constexpr std::int64_t kRecordBytes = 512;
constexpr std::int64_t kRowsPerRead = 512;                    // two pieces each, and a read takes up to 1,024
constexpr std::int64_t kBytesPerRead = std::int64_t{1} << 26; // a single read ends short above 2 GiB

std::int64_t rowBytes(const RowLayout& layout) {
    return layout.columns * layout.itemBytes;
}

std::int64_t rowOffset(const RowLayout& layout, std::int64_t row) {
    return kHeaderBytes + row * (rowBytes(layout) + layout.skippedBytes);
}

std::size_t readAt(std::FILE* stream, void* data, std::size_t bytes, std::int64_t offset) {
    auto* const out = static_cast<std::byte*>(data);
    std::size_t received = 0;
    while (received < bytes) {
        const ssize_t got =
            ::pread(::fileno(stream), out + received, bytes - received, offset + static_cast<std::int64_t>(received));
        if (got <= 0)
            break;
        received += static_cast<std::size_t>(got);
    }
    return received;
}

// One read of several rows, each straight to its place and the bytes behind it to nowhere. Whether all came at once.
bool readBatch(
    std::FILE* stream, const RowLayout& layout, std::int64_t first, std::int64_t count, std::byte* out,
    std::vector<::iovec>& pieces) {
    static std::byte nowhere[kRecordBytes];
    const auto bytes = static_cast<std::size_t>(rowBytes(layout));
    const auto skipped = static_cast<std::size_t>(layout.skippedBytes);
    pieces.clear();
    for (std::int64_t i = 0; i < count; ++i) {
        pieces.push_back({out + static_cast<std::size_t>(i) * bytes, bytes});
        if (skipped > 0 && i + 1 < count)
            pieces.push_back({nowhere, skipped});
    }
    const std::int64_t wanted = rowOffset(layout, first + count - 1) + rowBytes(layout) - rowOffset(layout, first);
    return ::preadv(::fileno(stream), pieces.data(), static_cast<int>(pieces.size()), rowOffset(layout, first)) ==
           wanted;
}
} // namespace

std::int64_t recordPadding(int sampleSize, int columns) {
    const std::int64_t bytes = std::int64_t{sampleSize} * columns;
    return columns < 0 ? 0 : (bytes + kRecordBytes - 1) / kRecordBytes * kRecordBytes - bytes;
}

std::optional<NeededBytes> neededBytes(const RowLayout& layout) {
    if (!sampleCount(layout.rows, layout.columns, static_cast<std::size_t>(layout.itemBytes + kRecordBytes)))
        return std::nullopt;
    const std::int64_t stride = rowBytes(layout) + layout.skippedBytes;
    return NeededBytes{layout.rows * stride - layout.skippedBytes, layout.rows * stride};
}

bool hasWholeHeader(std::FILE* stream) {
    struct stat status {};
    return ::fstat(::fileno(stream), &status) == 0 && status.st_size >= kHeaderBytes;
}

std::int64_t dataBytes(std::FILE* stream) {
    struct stat status {};
    return ::fstat(::fileno(stream), &status) == 0 ? std::max<std::int64_t>(status.st_size - kHeaderBytes, 0) : 0;
}

std::size_t readData(std::FILE* stream, void* data, std::size_t bytes) {
    return readAt(stream, data, bytes, kHeaderBytes);
}

std::optional<std::size_t> sampleCount(std::int64_t rows, std::int64_t columns, std::size_t valueBytes) {
    if (rows < 0 || columns < 0)
        return std::nullopt;
    const auto limit = std::numeric_limits<std::ptrdiff_t>::max() / static_cast<std::ptrdiff_t>(valueBytes);
    if (columns > 0 && rows > limit / columns)
        return std::nullopt;
    return static_cast<std::size_t>(rows * columns);
}

int shownProduct(std::int64_t rows, std::int64_t columns, std::uint64_t valueBytes) {
    return static_cast<int>(static_cast<std::uint64_t>(rows) * static_cast<std::uint64_t>(columns) * valueBytes);
}

std::optional<ShortRow> findShortRow(std::FILE* stream, const RowLayout& layout) {
    const std::int64_t bytes = rowBytes(layout);
    if (layout.rows <= 0 || bytes <= 0)
        return std::nullopt;
    const std::int64_t available = dataBytes(stream);
    const std::int64_t stride = bytes + layout.skippedBytes;
    const std::int64_t complete = available < bytes ? 0 : 1 + (available - bytes) / stride;
    if (complete >= layout.rows)
        return std::nullopt;
    const std::int64_t rest = std::max<std::int64_t>(available - complete * stride, 0);
    return ShortRow{static_cast<int>(complete + 1), static_cast<int>(rest / layout.itemBytes)};
}

std::int64_t readRow(std::FILE* stream, const RowLayout& layout, std::int64_t row, void* samples) {
    const auto bytes = static_cast<std::size_t>(rowBytes(layout));
    return static_cast<std::int64_t>(readAt(stream, samples, bytes, rowOffset(layout, row))) /
           std::max<std::int64_t>(layout.itemBytes, 1);
}

std::optional<ShortRow>
readRows(std::FILE* stream, const RowLayout& layout, std::int64_t first, std::int64_t count, void* samples) {
    const std::int64_t bytes = rowBytes(layout);
    if (bytes <= 0)
        return std::nullopt;
    auto* place = static_cast<std::byte*>(samples);
    const std::int64_t rowsPerRead = std::clamp<std::int64_t>(kBytesPerRead / bytes, 1, kRowsPerRead);
    std::vector<::iovec> pieces;
    const std::int64_t end = first + count;
    for (std::int64_t row = first; row < end;) {
        const std::int64_t batch = std::min(rowsPerRead, end - row);
        if (readBatch(stream, layout, row, batch, place, pieces)) {
            row += batch;
            place += batch * bytes;
            continue;
        }
        // Row by row, to find the short one.
        for (const std::int64_t batchEnd = row + batch; row < batchEnd; ++row, place += bytes) {
            const std::int64_t received = readRow(stream, layout, row, place);
            if (received < layout.columns)
                return ShortRow{static_cast<int>(row + 1), static_cast<int>(received)};
        }
    }
    return std::nullopt;
}
} // namespace sorvane
