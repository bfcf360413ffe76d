// The process-wide file-status table, through which every existence and size question of the library is answered.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// One row of the table.
struct fileTrackingInfo {
    std::string fileName;   // exactly as the caller passed it: a/b and ./a/b are two rows
    std::int64_t size = -1; // bytes; -1 when the file was found but its length was never measured
    bool exists = false;    // whether the file could be opened for reading when it was probed
};

extern std::vector<fileTrackingInfo> seen;
extern std::uint32_t counter; // disk probes made for the table

// The index of the first row of `table` whose fileName equals `name`, or -1.
int hasSeen(const std::vector<fileTrackingInfo>& table, const std::string& name);

namespace sorvane {
// Whether two paths are spelt alike but for doubled slashes and steps to the same folder.
bool isSamePath(const std::string& a, const std::string& b);
} // namespace sorvane

// Base of the data-file classes: holds the file's name and carries the two operations on the table.
class File {
public:
    File() = default;
    explicit File(std::string name) : name_(std::move(name)) {}

    // The length in bytes of the file `name`, -1 when it exists but `measure` is false and nobody has measured it, 0
    // when it is missing. Answers from the table where it can; a row is never refreshed, but a new existing file that
    // finds more than 256 rows empties the table first.
    static std::int64_t Size(const std::string& name, bool measure);

    // Whether Size(name, false) is above 0 or -1. A file measured as 0 bytes long thus "does not exist", while one that
    // was only probed exists whatever its length: deliberate, callers rely on it to skip empty files.
    static bool Exists(const std::string& name);

    // Takes the rows of the file `name` out of the table, so that the next question asks the disk.
    static void forget(const std::string& name);

    const std::string& Name() const { return name_; }

protected:
    void setName(const std::string& name) { name_ = name; }

private:
    std::string name_;
};
