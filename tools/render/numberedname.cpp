// File names with a place for a number, as in "frame-%04d.png".
#include "numberedname.h"

#include <algorithm>

namespace sorvane {
NumberedName::NumberedName(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    std::size_t at = slash == std::string::npos ? 0 : slash + 1;
    before_ = path.substr(0, at);
    while (at < path.size()) {
        std::string& text = hasNumber_ ? after_ : before_;
        const char c = path[at++];
        if (c != '%') {
            text += c;
            continue;
        }
        if (at < path.size() && path[at] == '%') {
            text += path[at++];
            continue;
        }
        const std::size_t end = std::min(path.find_first_not_of("0123456789", at), path.size());
        // Two digits of width are more than any number has.
        if (end == path.size() || path[end] != 'd' || end - at > 3) {
            problem_ = path + ": what follows a % is neither a number like %04d nor a second %";
            return;
        }
        if (hasNumber_) {
            problem_ = path + ": there is more than one number in the name";
            return;
        }
        hasNumber_ = true;
        if (end != at) {
            fill_ = path[at] == '0' ? '0' : ' ';
            width_ = std::stoul(path.substr(at, end - at));
        }
        at = end + 1;
    }
}

std::string NumberedName::path(std::int64_t number) const {
    if (!hasNumber_)
        return before_;
    const std::string digits = std::to_string(number);
    return before_ + std::string(width_ - std::min(width_, digits.size()), fill_) + digits + after_;
}
} // namespace sorvane
