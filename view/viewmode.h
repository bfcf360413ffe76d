// What the camera is attached to.
#pragma once

#include <array>
#include <string_view>

// The values are fixed: the main window's view actions map onto them.
enum ViewMode {
    ViewThreat = 0, // follows the threat
    ViewGyro = 1,   // sits on the threat and looks along its seeker gyro
    ViewTarget = 2, // follows the target
    ViewFree = 3    // never moved by playback
};

namespace sorvane {
// What a mode is called.
struct ViewModeName {
    ViewMode mode = ViewFree;
    const char* shown = "";    // where the view is named
    const char* menuText = ""; // of the action that chooses it
    const char* option = "";   // on the command line
};

// In the order of the menu.
constexpr std::array<ViewModeName, 4> kViewModes = {{
    {ViewThreat, "Threat", "View Threat", "threat"},
    {ViewGyro, "Gyro", "View Gyro", "gyro"},
    {ViewTarget, "Target", "View Target", "target"},
    {ViewFree, "Free", "View Free", "free"},
}};

// A mode that isn't in the table is a free view.
constexpr const ViewModeName& nameOf(ViewMode mode) {
    for (const ViewModeName& name : kViewModes)
        if (name.mode == mode)
            return name;
    return kViewModes.back();
}

// The mode of a menu's action; any other text chooses the free view.
constexpr ViewMode viewModeOf(std::string_view menuText) {
    for (const ViewModeName& name : kViewModes)
        if (name.menuText == menuText)
            return name.mode;
    return ViewFree;
}
} // namespace sorvane
