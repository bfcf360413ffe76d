// Prints the most memory, in bytes, that our own code held at a time while it loaded the terrain whose description is
// named in the argument: what operator new gave, so without the driver's copies.
#include <malloc.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <new>

#include "glcontext.h"

#include "terrain.h"

using namespace sorvane;

namespace {
std::atomic<long long> heldBytes = 0;
std::atomic<long long> peakBytes = 0;

void* counted(std::size_t bytes) noexcept {
    void* const memory = std::malloc(bytes == 0 ? 1 : bytes);
    if (memory == nullptr)
        return nullptr;
    const long long held = heldBytes += static_cast<long long>(::malloc_usable_size(memory));
    long long peak = peakBytes;
    while (held > peak && !peakBytes.compare_exchange_weak(peak, held)) {
    }
    return memory;
}
} // namespace

void* operator new(std::size_t bytes) {
    if (void* const memory = counted(bytes))
        return memory;
    throw std::bad_alloc();
}
void* operator new[](std::size_t bytes) {
    return operator new(bytes);
}
void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept {
    return counted(bytes);
}
void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept {
    return counted(bytes);
}
void operator delete(void* memory) noexcept {
    if (memory != nullptr)
        heldBytes -= static_cast<long long>(::malloc_usable_size(memory));
    std::free(memory);
}
void operator delete[](void* memory) noexcept {
    operator delete(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}
void operator delete[](void* memory, std::size_t) noexcept {
    operator delete(memory);
}

int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    const GlContext context(64, 64);
    Terrain terrain;
    terrain.setShaderDir(argv[2]);
    const long long before = heldBytes;
    peakBytes = before;
    const std::string description = argv[1];
    if (!terrain.load(description, std::filesystem::path(description).parent_path().string(), 1) || !terrain.loadAll())
        return 1;
    std::fprintf(stderr, "%lld\n", peakBytes - before);
    return 0;
}
