// What the benchmarks of terrain share: a folder for their files, and silence.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

#include <fcntl.h>
#include <unistd.h>

namespace sorvane {
struct Folder {
    Folder() : path(std::filesystem::temp_directory_path() / ("sorvane.bench." + std::to_string(::getpid()))) {
        std::filesystem::create_directories(path);
    }
    ~Folder() { std::filesystem::remove_all(path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string file(const std::string& name) const { return (path / name).string(); }

    std::filesystem::path path;
};

// While one is alive, what the loaders print goes nowhere.
class SilentOutput {
public:
    SilentOutput() : output_((std::fflush(stdout), ::dup(STDOUT_FILENO))) {
        const int nowhere = ::open("/dev/null", O_WRONLY);
        ::dup2(nowhere, STDOUT_FILENO);
        ::close(nowhere);
    }
    ~SilentOutput() {
        std::fflush(stdout);
        ::dup2(output_, STDOUT_FILENO);
        ::close(output_);
    }
    SilentOutput(const SilentOutput&) = delete;
    SilentOutput& operator=(const SilentOutput&) = delete;

private:
    int output_;
};
} // namespace sorvane
