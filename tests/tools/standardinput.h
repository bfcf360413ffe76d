// Puts a file in the place of standard input for the length of a test.
#pragma once

#include <cstdio>
#include <string>

#include <fcntl.h>
#include <stdio_ext.h>
#include <unistd.h>

namespace sorvane {
class StandardInput {
public:
    explicit StandardInput(const std::string& path) : saved_(::dup(STDIN_FILENO)) {
        const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
        ::dup2(file, STDIN_FILENO);
        ::close(file);
        ::__fpurge(stdin); // of another file
        std::clearerr(stdin);
    }
    ~StandardInput() {
        ::dup2(saved_, STDIN_FILENO);
        ::close(saved_);
    }
    StandardInput(const StandardInput&) = delete;
    StandardInput& operator=(const StandardInput&) = delete;

private:
    int saved_;
};
} // namespace sorvane
