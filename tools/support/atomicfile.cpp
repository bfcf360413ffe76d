// A file that takes its name only when it is whole.
#include "atomicfile.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace sorvane {
namespace {
// A hidden name beside `target` that no other process and no other file of this one uses.
std::filesystem::path temporaryBeside(const std::filesystem::path& target) {
    static std::atomic<unsigned> made = 0;
    std::string name = ".sorvane-" + std::to_string(::getpid()) + "-" + std::to_string(++made);
    name += target.extension().string();
    return target.parent_path() / name;
}

// Creates an empty file with the permissions that the user's mask leaves; 0 or an error number.
int create(const std::filesystem::path& path) {
    const int descriptor = ::open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return errno;
    ::close(descriptor);
    return 0;
}
} // namespace

AtomicFile::AtomicFile(const std::filesystem::path& target) : target_(target) {
    std::error_code ignored;
    if (std::filesystem::is_symlink(target_, ignored)) {
        const std::filesystem::path led = std::filesystem::weakly_canonical(target_, ignored);
        if (!ignored)
            target_ = led;
    }
    // The name of a device must not be taken from it.
    const std::filesystem::file_status status = std::filesystem::status(target_, ignored);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        fail("not a regular file");
        return;
    }
    // A file of this name is what a process of the same number left behind.
    int error = EEXIST;
    for (int attempt = 0; error == EEXIST && attempt < 100; ++attempt) {
        temporary_ = temporaryBeside(target_);
        error = create(temporary_);
    }
    if (error != 0) {
        temporary_.clear();
        fail(std::strerror(error));
    }
}

AtomicFile::~AtomicFile() {
    removeTemporary();
}

bool AtomicFile::commit() {
    if (temporary_.empty())
        return false;
    std::error_code error;
    std::filesystem::rename(temporary_, target_, error);
    if (error) {
        fail(error.message());
        removeTemporary();
        return false;
    }
    temporary_.clear();
    return true;
}

void AtomicFile::fail(const std::string& reason) {
    problem_ = target_.string() + ": " + reason;
}

void AtomicFile::removeTemporary() {
    std::error_code ignored;
    if (!temporary_.empty())
        std::filesystem::remove(temporary_, ignored);
    temporary_.clear();
}
} // namespace sorvane
