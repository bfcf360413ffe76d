// The name of an engagement while the program runs.
#pragma once

#include <cstdint>

namespace sorvane {
// Stands for an engagement wherever something is kept for it: its samples may be read again, and an address may be
// given to another one. Never given twice; zero is nobody's.
enum class EngagementId : std::uint32_t {};

// GUI thread only.
inline EngagementId newEngagementId() {
    static std::uint32_t last = 0;
    return EngagementId{++last};
}
} // namespace sorvane
