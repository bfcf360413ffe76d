// What the camera is attached to.
#pragma once

// The values are fixed: the main window's view actions map onto them.
enum ViewMode {
    ViewThreat = 0, // follows the threat
    ViewGyro = 1,   // sits on the threat and looks along its seeker gyro
    ViewTarget = 2, // follows the target
    ViewFree = 3    // never moved by playback
};
