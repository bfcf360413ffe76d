// Where the samples of a raster lie in its file, and how they get into memory without trusting the header's sizes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <optional>

#include "largepages.h"

namespace sorvane {
// Rows of samples behind the header, each followed by bytes that are skipped.
struct RowLayout {
    std::int64_t rows = 0;
    std::int64_t columns = 0;
    std::int64_t itemBytes = 0; // read for each sample
    std::int64_t skippedBytes = 0;
};

// What fills a row of `columns` samples of `sampleSize` bytes up to a whole number of 512-byte records.
std::int64_t recordPadding(int sampleSize, int columns);

// Bytes behind the header that all rows need; at most those of what follows the last row's samples come on top.
struct NeededBytes {
    std::int64_t least = 0;
    std::int64_t most = 0;
};
// Nothing for sizes that no file has.
std::optional<NeededBytes> neededBytes(const RowLayout& layout);

// The first row that a file is too short for.
struct ShortRow {
    int number = 0;   // counted from 1
    int received = 0; // whole samples of it
};

// Answers from the file's length; nothing when every row is there or the layout's sizes are negative.
std::optional<ShortRow> findShortRow(std::FILE* stream, const RowLayout& layout);

// Reads `count` rows from row `first`, counted from 0, straight into `samples`, which has room for them without what is
// skipped. The answer counts rows from the file's first.
std::optional<ShortRow>
readRows(std::FILE* stream, const RowLayout& layout, std::int64_t first, std::int64_t count, void* samples);

// Reads row `row`, counted from 0, into `samples`; returns how many whole samples there were.
std::int64_t readRow(std::FILE* stream, const RowLayout& layout, std::int64_t row, void* samples);

// rows · columns, or nothing when either is negative or so many values of this size can't be addressed.
std::optional<std::size_t> sampleCount(std::int64_t rows, std::int64_t columns, std::size_t valueBytes);

// The product as an int, as the messages about impossible sizes print it: its low 32 bits.
int shownProduct(std::int64_t rows, std::int64_t columns, std::uint64_t valueBytes = 1);

// An uninitialised array of rows · columns values; null when there can't be one.
template <class T> std::unique_ptr<T[]> allocateSamples(std::int64_t rows, std::int64_t columns) {
    const auto count = sampleCount(rows, columns, sizeof(T));
    std::unique_ptr<T[]> samples(count ? new (std::nothrow) T[*count] : nullptr);
    if (samples != nullptr)
        useLargePages(samples.get(), *count * sizeof(T));
    return samples;
}

// Whether a file is at least as long as a header of any family.
bool hasWholeHeader(std::FILE* stream);

// Bytes of a file behind its header.
std::int64_t dataBytes(std::FILE* stream);

// Reads up to `bytes` bytes from behind the header; returns how many there were.
std::size_t readData(std::FILE* stream, void* data, std::size_t bytes);

// A contiguous raster, read in one piece. Values that the file lacks are zero, however many they are; null for sizes
// that no array can have.
template <class T> struct ContiguousSamples {
    std::unique_ptr<T[]> values;
    bool isComplete = false;
};
template <class T> ContiguousSamples<T> readContiguous(std::FILE* stream, std::int64_t rows, std::int64_t columns) {
    ContiguousSamples<T> samples;
    const auto count = sampleCount(rows, columns, sizeof(T));
    samples.values = allocateSamples<T>(rows, columns);
    if (samples.values == nullptr)
        return samples;
    const std::size_t received = readData(stream, samples.values.get(), *count * sizeof(T)) / sizeof(T);
    samples.isComplete = received == *count;
    clearPages(samples.values.get() + received, (*count - received) * sizeof(T)); // no bits set is 0 in every type
    return samples;
}
} // namespace sorvane
