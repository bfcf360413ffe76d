// A file that takes its name only when it is whole.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "problem.h"

namespace sorvane {
// Gives a temporary file in the folder of the file that is to be, with the same extension, since writers go by that.
// Whoever writes it calls commit at the end; without that, the temporary is removed and what had the name before stays.
class AtomicFile {
public:
    // Makes the temporary file, empty. A link is followed: the file that it leads to is replaced.
    explicit AtomicFile(const std::filesystem::path& target);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    // Where to write. Empty when there is no such file; problem() then says why.
    const std::filesystem::path& temporaryPath() const { return temporary_; }

    // Gives the written file its name. On failure the temporary is removed.
    bool commit();

    // What was wrong, such as "out/a.png: Permission denied"; nothing when all went well.
    const std::optional<sorvane::Problem>& problem() const { return problem_; }

private:
    void fail(const std::string& reason);
    void removeTemporary();

    std::filesystem::path target_;
    std::filesystem::path temporary_;
    std::optional<sorvane::Problem> problem_;
};
} // namespace sorvane
