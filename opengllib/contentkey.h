// What a body or a tile is made of: files as they are on disk, and values.
#pragma once

#include <array>
#include <string>
#include <type_traits>
#include <vector>

namespace sorvane {
// Two keys are equal when the same files, unchanged, and the same values were added in the same order.
class ContentKey {
public:
    // Adds a path with the stamp of the file that it leads to now: device, inode, length and times of change. One that
    // leads nowhere is a file, too.
    void addFile(const std::string& path);

    template <class... Values> void addValues(const Values&... values) { (addBytes(values), ...); }

    // Whether the file, or one in the folder, of a path that was added has this path.
    bool names(const std::string& path) const;

    bool operator==(const ContentKey& other) const { return bytes_ == other.bytes_; }

private:
    template <class Value> void addBytes(const Value& value) {
        static_assert(std::has_unique_object_representations_v<Value> || std::is_floating_point_v<Value>);
        bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    template <class Value, std::size_t count> void addBytes(const std::array<Value, count>& values) {
        for (const Value& value : values)
            addBytes(value);
    }

    std::string bytes_;
    std::vector<std::string> paths_;
};
} // namespace sorvane
