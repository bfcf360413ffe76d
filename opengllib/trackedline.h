// One line of a tracked file, for readers that take fields in place and fall back to sscanf.
#pragma once

#include <string_view>

#include "filetracker.h"

namespace sorvane {
class TrackedLine {
public:
    // The buffer of the line readers: 255 characters and a zero.
    static constexpr int kLineLength = 256;

    // Takes the next line; false at the end. The line is valid while the tracker is.
    bool next(FileTracker& lines) {
        isCopied_ = false;
        if (lines.AtEnd())
            return false;
        view_ = lines.nextLine();
        return true;
    }

    std::string_view view() const { return view_; }

    // The line as sscanf and messages want it, ended by a zero and cut at 255 characters.
    const char* text() {
        if (!isCopied_) {
            copy_[view_.copy(copy_, sizeof copy_ - 1)] = '\0';
            isCopied_ = true;
        }
        return copy_;
    }

private:
    std::string_view view_;
    char copy_[kLineLength] = {};
    bool isCopied_ = false;
};
} // namespace sorvane
