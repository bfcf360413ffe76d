// Memory for large arrays.
#include "largepages.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <sys/mman.h>

namespace sorvane {
namespace {
constexpr std::size_t kLargePage = std::size_t{2} << 20;
constexpr std::size_t kPage = 4096;
} // namespace

void useLargePages(void* data, std::size_t bytes) {
    if (data == nullptr || std::align(kLargePage, kLargePage, data, bytes) == nullptr)
        return;
    [[maybe_unused]] const int result = ::madvise(data, bytes / kLargePage * kLargePage, MADV_HUGEPAGE);
}

void clearPages(void* data, std::size_t bytes) {
    void* pages = data;
    std::size_t rest = bytes;
    if (std::align(kPage, kPage, pages, rest) != nullptr) {
        rest = rest / kPage * kPage;
        if (::madvise(pages, rest, MADV_DONTNEED) == 0) {
            auto* const begin = static_cast<std::byte*>(data);
            auto* const first = static_cast<std::byte*>(pages);
            std::fill(begin, first, std::byte{0});
            std::fill(first + rest, begin + bytes, std::byte{0});
            return;
        }
    }
    std::memset(data, 0, bytes);
}
} // namespace sorvane
