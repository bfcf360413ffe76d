// Memory for large arrays in pages that are cheap to touch for the first time.
#pragma once

#include <cstddef>

namespace sorvane {
// Asks for large pages for the inside of a new array, before it is written: filling a tile's arrays would otherwise
// spend most of its time in page faults. A hint; small arrays are left alone.
void useLargePages(void* data, std::size_t bytes);

// Sets bytes of an array from `new` to 0. Whole pages take up memory only when they are next touched.
void clearPages(void* data, std::size_t bytes);
} // namespace sorvane
