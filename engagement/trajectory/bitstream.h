// Numbers of any width in bits, one behind the other.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace sorvane {
class BitWriter {
public:
    // Takes the lowest `width` bits, up to 64; the others are to be 0.
    void write(std::uint64_t value, unsigned width) {
        if (width == 0)
            return;
        const auto at = static_cast<unsigned>(bits_ % 64);
        if (at == 0)
            words_.push_back(value);
        else
            words_.back() |= value << at;
        if (at + width > 64)
            words_.push_back(value >> (64 - at));
        bits_ += width;
    }

    // What a reader wants: a word more than was written, so that it may always look at two.
    std::vector<std::uint64_t> take() {
        words_.push_back(0);
        words_.shrink_to_fit();
        return std::move(words_);
    }

private:
    std::vector<std::uint64_t> words_;
    std::size_t bits_ = 0;
};

// Must be asked for the widths that were written.
class BitReader {
public:
    explicit BitReader(const std::vector<std::uint64_t>& words) : words_(words.data()) {}

    std::uint64_t read(unsigned width) {
        if (width == 0)
            return 0;
        const std::uint64_t* const word = words_ + bits_ / 64;
        const auto at = static_cast<unsigned>(bits_ % 64);
        bits_ += width;
        const std::uint64_t both = word[0] >> at | word[1] << 1 << (63 - at);
        return both & (~std::uint64_t{0} >> (64 - width));
    }

private:
    const std::uint64_t* words_;
    std::size_t bits_ = 0;
};
} // namespace sorvane
