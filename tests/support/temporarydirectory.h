// Files that live as long as one test.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

// The whole contents of a file, empty when it can't be read.
inline std::string readWholeFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

// An empty directory with a name of its own, removed with all that is in it at the end.
class TemporaryDirectory {
public:
    TemporaryDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "sorvane-test-XXXXXX").string();
        if (::mkdtemp(name.data()) == nullptr)
            std::abort();
        path_ = name;
    }
    ~TemporaryDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }

    // The path of the file `name` in here, as the readers take it.
    std::string file(std::string_view name) const { return (path_ / name).string(); }

    // Writes the file `name`, with the folders on its way, and returns its path.
    std::string write(std::string_view name, std::string_view contents) const {
        const std::filesystem::path target = path_ / name;
        std::filesystem::create_directories(target.parent_path());
        std::ofstream(target, std::ios::binary).write(contents.data(), static_cast<std::streamsize>(contents.size()));
        return target.string();
    }

private:
    std::filesystem::path path_;
};
