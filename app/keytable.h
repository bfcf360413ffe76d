// The viewer's keys: the one table from which the keys work and are listed, in the window and in the documents.
#pragma once

#include <array>
#include <span>

#include <QString>
#include <Qt>

namespace sorvane {
enum class KeyCommand {
    PlayOrPause,
    ShuttleBackward,
    ShuttleStop,
    ShuttleForward,
    SlowBackward,
    SlowForward,
    PreviousSample,
    NextSample,
    TenthBack,
    TenthForward,
    SecondBack,
    SecondForward,
    ToStart,
    ToEnd,
    PreviousEvent,
    NextEvent,
    ToClosestApproach,
    ExtendClock,
    SetInPoint,
    SetOutPoint,
    ToggleLoop,
    ViewThreat,
    ViewGyro,
    ViewTarget,
    ViewFree,
    Overview,
    ToggleReticles,
    TurnLeft,
    TurnRight,
    TurnUp,
    TurnDown,
    SlideLeft,
    SlideRight,
    SlideUp,
    SlideDown,
    ZoomIn,
    ZoomOut,
    FollowPrevious,
    FollowNext,
    ToggleOthers,
    ToggleGhosts,
    CycleGhostColours,
    CycleGhostAlignment,
    TakeOut,
    ToggleReadout,
    CycleReadoutCorner,
    CycleUnit,
    ToggleNames,
    TogglePlots,
    ToggleRuns,
    OpenView,
    ToggleLineStyles,
    CycleAntialiasing,
    CycleScale,
    CyclePalette,
    ScaleUp,
    ScaleDown,
    ToggleFullScreen,
    Screenshot,
    ToggleRecording,
    Reload,
    ShowKeys,
    Exit
};

struct KeyRow {
    KeyCommand command{};
    std::array<QKeyCombination, 2> keys{}; // the second one is Qt::Key_unknown where there is only one
    const char* section = "";              // rows of one section stand together
    const char* effect = "";
    bool repeats = false; // whether the key acts again and again while it is held
};

std::span<const KeyRow> keyTable();

// The row of a key with its modifiers, or null. Characters other than letters count whatever Shift or the keypad have
// to do with typing them.
const KeyRow* keyRowOf(QKeyCombination pressed);

// The row's keys as people read them: "F1, ?".
QString keyTexts(const KeyRow& row);
QString keyTexts(KeyCommand command);

// The table for the documents: one section after the other, each with its heading and a table of keys and effects.
QString keyTableAsMarkdown();
} // namespace sorvane
