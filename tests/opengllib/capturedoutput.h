// What a call leaves on the standard streams, and a process end that a test survives.
#pragma once

#include <string>

#include <gtest/gtest.h>

#include "endprocess.h"
#include "errorline.h"

namespace sorvane {
// Standard error without source lines, then standard output, of one call.
template <class Call> std::string outputOf(Call call) {
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    call();
    const std::string errors = withoutSourceLines(testing::internal::GetCapturedStderr());
    return errors + testing::internal::GetCapturedStdout();
}

// Whether a call ended the process, which here ends only the call.
template <class Call> bool endsTheProcess(Call call) {
    struct Ended {};
    const EndProcessHandler before = setEndProcessHandler([] { throw Ended{}; });
    bool hasEnded = false;
    try {
        call();
    } catch (const Ended&) {
        hasEnded = true;
    }
    setEndProcessHandler(before);
    return hasEnded;
}
} // namespace sorvane
