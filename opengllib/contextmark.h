// Tells in which OpenGL contexts objects exist.
#pragma once

#include <cstdint>

namespace sorvane {
// Contexts share their objects or have names of their own for them, and OpenGL doesn't tell which. A mark is a buffer
// that holds a number of its own: where the buffer is found with that number, what was made beside it is found, too.
class ContextMark {
public:
    ContextMark() = default;
    ~ContextMark(); // of a mark that was set needs a context that it is in
    ContextMark(const ContextMark&) = delete;
    ContextMark& operator=(const ContextMark&) = delete;

    // Marks the current context and those that share with it. Once.
    void set();
    // Whether the current context is one of them.
    bool isInCurrentContext() const;

private:
    unsigned buffer_ = 0;
    std::uint64_t number_ = 0;
};
} // namespace sorvane
