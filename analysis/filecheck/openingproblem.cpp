// Why a file can't be opened, or can't be read as it is.
#include "openingproblem.h"

#include <filesystem>

#include "compression.h"
#include "trajectoryinput.h"

namespace sorvane {
Problem problemOfOpening(const std::string& path) {
    std::error_code ignored;
    const std::filesystem::file_status status = std::filesystem::status(path, ignored);
    if (!std::filesystem::exists(status))
        return {"there is no such file"};
    return {std::filesystem::is_regular_file(status) ? "can't be opened" : "is not a regular file"};
}

std::optional<Problem> problemOfInput(const TrajectoryInput& input, const std::string& path) {
    constexpr qint64 kHeadBytes = 8;
    const QByteArray head = input.isProcess ? QByteArray() : input.device->peek(kHeadBytes);
    return problemOfCompression(std::string_view(head.data(), static_cast<std::size_t>(head.size())), path);
}
} // namespace sorvane
