// Compression as the Unix program `compress` does it: Lempel, Ziv and Welch's method with codes of 9 to 16 bits.
#include "lzw.h"

#include <cstdint>
#include <vector>

namespace sorvane {
namespace {
constexpr unsigned kMinimumWidth = 9;
constexpr unsigned kMaximumWidth = 16;
constexpr unsigned kClearCode = 256; // tells the reader to forget its table
constexpr unsigned kFirstFreeCode = 257;
constexpr unsigned kTableSize = 1U << kMaximumWidth;
constexpr unsigned kCodesPerGroup = 8;

// Packs codes least significant bit first. A reader fetches codes in groups of eight of one width, so that a group that
// a change of width breaks off is filled up.
class CodeWriter {
public:
    explicit CodeWriter(std::string& out) : out_(out) {}

    unsigned width() const { return width_; }

    void put(unsigned code) {
        pending_ |= std::uint64_t{code} << pendingBits_;
        pendingBits_ += width_;
        while (pendingBits_ >= 8)
            putByte();
        inGroup_ = (inGroup_ + 1) % kCodesPerGroup;
    }

    void changeWidth(unsigned width) {
        while (inGroup_ != 0)
            put(0);
        width_ = width;
    }

    void finish() {
        if (pendingBits_ > 0)
            putByte();
    }

private:
    void putByte() {
        out_.push_back(static_cast<char>(pending_ & 0xFFU));
        pending_ >>= 8U;
        pendingBits_ = pendingBits_ > 8 ? pendingBits_ - 8 : 0;
    }

    std::string& out_;
    std::uint64_t pending_ = 0;
    unsigned pendingBits_ = 0;
    unsigned width_ = kMinimumWidth;
    unsigned inGroup_ = 0; // codes in the group so far
};

// The strings that have codes, as a tree: each continues its parent by one byte.
class StringTable {
public:
    StringTable() : entries_(kTableSize) { clear(); }

    unsigned nextCode() const { return nextCode_; }
    bool isFull() const { return nextCode_ == kTableSize; }

    // The code of string `parent` continued by `byte`, or 0 when it has none: 0 continues nothing.
    unsigned find(unsigned parent, std::uint8_t byte) const {
        unsigned code = entries_[parent].firstChild;
        while (code != 0 && entries_[code].byte != byte)
            code = entries_[code].nextSibling;
        return code;
    }

    void add(unsigned parent, std::uint8_t byte) {
        entries_[nextCode_] = {0, entries_[parent].firstChild, byte};
        entries_[parent].firstChild = nextCode_++;
    }

    void clear() {
        for (unsigned code = 0; code < kFirstFreeCode; ++code)
            entries_[code].firstChild = 0;
        nextCode_ = kFirstFreeCode;
    }

private:
    struct Entry {
        unsigned firstChild = 0;
        unsigned nextSibling = 0;
        std::uint8_t byte = 0;
    };

    std::vector<Entry> entries_;
    unsigned nextCode_ = kFirstFreeCode;
};
} // namespace

std::string lzwCompressed(std::string_view bytes) {
    constexpr unsigned kBlockMode = 0x80; // the clear code is in use
    std::string out = {'\x1F', '\x9D', static_cast<char>(kBlockMode | kMaximumWidth)};
    if (bytes.empty())
        return out;

    CodeWriter codes(out);
    StringTable table;
    // The reader widens its codes once the table as it knows it, one entry behind ours, has outgrown them.
    const auto putCode = [&](unsigned code) {
        codes.put(code);
        if (table.nextCode() >= 1U << codes.width() && codes.width() < kMaximumWidth)
            codes.changeWidth(codes.width() + 1);
    };

    auto current = unsigned{static_cast<std::uint8_t>(bytes.front())};
    for (const char character : bytes.substr(1)) {
        const auto byte = static_cast<std::uint8_t>(character);
        if (const unsigned longer = table.find(current, byte); longer != 0) {
            current = longer;
            continue;
        }
        putCode(current);
        table.add(current, byte);
        if (table.isFull()) {
            codes.put(kClearCode);
            codes.changeWidth(kMinimumWidth);
            table.clear();
        }
        current = byte;
    }
    putCode(current);
    codes.finish();
    return out;
}
} // namespace sorvane
