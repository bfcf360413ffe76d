// The process-wide file-status table, through which every existence and size question of the library is answered.
#include "file.h"

#include <cstdio>
#include <filesystem>
#include <string_view>

#include "inputfile.h"

using namespace sorvane;

std::vector<fileTrackingInfo> seen;
std::uint32_t counter = 0;

namespace {
constexpr std::size_t kMaximumRows = 256;

std::int64_t lengthOf(std::FILE* stream) {
    const long start = std::ftell(stream);
    std::fseek(stream, 0, SEEK_END);
    return std::ftell(stream) - start;
}
} // namespace

bool sorvane::isSamePath(const std::string& a, const std::string& b) {
    const auto name = [](std::string_view path) {
        return path.substr(path.rfind('/') + 1); // the whole of a name without a folder
    };
    // Nearly all differ in their names, which costs next to nothing to see.
    if (name(a) != name(b))
        return false;
    return a == b || std::filesystem::path(a).lexically_normal() == std::filesystem::path(b).lexically_normal();
}

void File::forget(const std::string& name) {
    std::erase_if(seen, [&](const fileTrackingInfo& row) { return isSamePath(row.fileName, name); });
}

int hasSeen(const std::vector<fileTrackingInfo>& table, const std::string& name) {
    for (std::size_t row = 0; row < table.size(); ++row)
        if (table[row].fileName == name)
            return static_cast<int>(row);
    return -1;
}

std::int64_t File::Size(const std::string& name, bool measure) {
    const int found = hasSeen(seen, name);
    if (found >= 0) {
        const fileTrackingInfo& row = seen[static_cast<std::size_t>(found)];
        if (!measure || row.size != -1)
            return row.exists ? row.size : 0;
    }

    fileTrackingInfo row{name, -1, false};
    ++counter;
    const FileHandle stream = openInputFile(name);
    if (stream == nullptr) {
        // Appended without the purge, and even when an unmeasured row of this name exists: the first row keeps winning.
        row.size = 0;
        seen.push_back(row);
        return 0;
    }
    if (measure)
        row.size = lengthOf(stream.get());
    if (found >= 0) {
        seen[static_cast<std::size_t>(found)].size = row.size;
        return row.size;
    }
    if (seen.size() > kMaximumRows)
        seen.clear();
    row.exists = true;
    seen.push_back(row);
    return row.size;
}

bool File::Exists(const std::string& name) {
    const std::int64_t size = Size(name, false);
    return size > 0 || size == -1;
}
