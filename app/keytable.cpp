// The viewer's keys: the one table from which the keys work and are listed, in the window and in the documents.
#include "keytable.h"

#include <algorithm>

#include <QKeySequence>
#include <QStringList>

namespace sorvane {
namespace {
constexpr QKeyCombination kNone{Qt::Key_unknown};
constexpr bool kRepeats = true;

constexpr const char* kPlayback = "Playback";
constexpr const char* kTime = "Time";
constexpr const char* kLoop = "Loop";
constexpr const char* kCamera = "Camera";
constexpr const char* kEngagements = "Engagements";
constexpr const char* kWindow = "Window and files";

constexpr KeyRow kRows[] = {
    {KeyCommand::PlayOrPause, {Qt::Key_Space, kNone}, kPlayback, "play forward at the playback speed, or pause"},
    {KeyCommand::ShuttleBackward,
     {Qt::Key_J, kNone},
     kPlayback,
     "play backward in real time; pressed again, faster, up to 32 times; stops at 0"},
    {KeyCommand::ShuttleStop, {Qt::Key_K, kNone}, kPlayback, "stop"},
    {KeyCommand::ShuttleForward,
     {Qt::Key_L, kNone},
     kPlayback,
     "play forward in real time; pressed again, faster, up to 32 times"},
    {KeyCommand::SlowBackward,
     {Qt::SHIFT | Qt::Key_J, kNone},
     kPlayback,
     "play backward at half of real time; pressed again, slower, down to 1/32"},
    {KeyCommand::SlowForward,
     {Qt::SHIFT | Qt::Key_L, kNone},
     kPlayback,
     "play forward at half of real time; pressed again, slower, down to 1/32"},

    {KeyCommand::PreviousSample, {Qt::Key_Left, kNone}, kTime, "previous sample of the selected engagement", kRepeats},
    {KeyCommand::NextSample, {Qt::Key_Right, kNone}, kTime, "next sample of the selected engagement", kRepeats},
    {KeyCommand::TenthBack, {Qt::SHIFT | Qt::Key_Left, kNone}, kTime, "0.1 s back", kRepeats},
    {KeyCommand::TenthForward, {Qt::SHIFT | Qt::Key_Right, kNone}, kTime, "0.1 s forward", kRepeats},
    {KeyCommand::SecondBack, {Qt::CTRL | Qt::Key_Left, kNone}, kTime, "1 s back", kRepeats},
    {KeyCommand::SecondForward, {Qt::CTRL | Qt::Key_Right, kNone}, kTime, "1 s forward", kRepeats},
    {KeyCommand::ToStart, {Qt::Key_Home, kNone}, kTime, "to the start, 0 s"},
    {KeyCommand::ToEnd, {Qt::Key_End, kNone}, kTime, "to the end of the longest engagement"},
    {KeyCommand::PreviousEvent,
     {Qt::Key_BracketLeft, kNone},
     kTime,
     "previous event of the selected engagement: first sample, a flare's appearance, closest approach, last sample",
     kRepeats},
    {KeyCommand::NextEvent, {Qt::Key_BracketRight, kNone}, kTime, "next event", kRepeats},
    {KeyCommand::ToClosestApproach, {Qt::Key_C, kNone}, kTime, "to the closest approach of the selected engagement"},
    {KeyCommand::ExtendClock,
     {Qt::Key_E, kNone},
     kTime,
     "let the clock run to the end of the longest engagement, until the viewer is closed"},

    {KeyCommand::SetInPoint, {Qt::Key_I, kNone}, kLoop, "the loop begins here"},
    {KeyCommand::SetOutPoint, {Qt::Key_O, kNone}, kLoop, "the loop ends here"},
    {KeyCommand::ToggleLoop, {Qt::Key_Backslash, kNone}, kLoop, "loop between the two points, on or off"},

    {KeyCommand::ViewThreat,
     {Qt::Key_1, kNone},
     kCamera,
     "threat view of the selected engagement; the camera's start when it is chosen already"},
    {KeyCommand::ViewGyro, {Qt::Key_2, kNone}, kCamera, "gyro view, likewise"},
    {KeyCommand::ViewTarget, {Qt::Key_3, kNone}, kCamera, "target view, likewise"},
    {KeyCommand::ViewFree, {Qt::Key_4, kNone}, kCamera, "free view, likewise"},
    {KeyCommand::Overview, {Qt::Key_5, kNone}, kCamera, "free view with all of the selected engagement in the picture"},
    {KeyCommand::ToggleReticles,
     {Qt::Key_R, kNone},
     kCamera,
     "gyro view: the circle of the selected engagement only, or of all"},
    {KeyCommand::TurnLeft,
     {Qt::ALT | Qt::Key_Left, kNone},
     kCamera,
     "turn as a drag left with the left button does",
     kRepeats},
    {KeyCommand::TurnRight,
     {Qt::ALT | Qt::Key_Right, kNone},
     kCamera,
     "turn as a drag right with the left button does",
     kRepeats},
    {KeyCommand::TurnUp,
     {Qt::ALT | Qt::Key_Up, kNone},
     kCamera,
     "turn as a drag up with the left button does",
     kRepeats},
    {KeyCommand::TurnDown,
     {Qt::ALT | Qt::Key_Down, kNone},
     kCamera,
     "turn as a drag down with the left button does",
     kRepeats},
    {KeyCommand::SlideLeft,
     {Qt::ALT | Qt::SHIFT | Qt::Key_Left, kNone},
     kCamera,
     "slide as a drag left with the right button does",
     kRepeats},
    {KeyCommand::SlideRight,
     {Qt::ALT | Qt::SHIFT | Qt::Key_Right, kNone},
     kCamera,
     "slide as a drag right with the right button does",
     kRepeats},
    {KeyCommand::SlideUp,
     {Qt::ALT | Qt::SHIFT | Qt::Key_Up, kNone},
     kCamera,
     "slide as a drag up with the right button does",
     kRepeats},
    {KeyCommand::SlideDown,
     {Qt::ALT | Qt::SHIFT | Qt::Key_Down, kNone},
     kCamera,
     "slide as a drag down with the right button does",
     kRepeats},
    {KeyCommand::ZoomIn, {Qt::Key_Plus, Qt::Key_Equal}, kCamera, "nearer, as the wheel does", kRepeats},
    {KeyCommand::ZoomOut, {Qt::Key_Minus, kNone}, kCamera, "farther away", kRepeats},

    {KeyCommand::FollowPrevious, {Qt::Key_PageUp, kNone}, kEngagements, "follow the previous one in the same view"},
    {KeyCommand::FollowNext, {Qt::Key_PageDown, kNone}, kEngagements, "follow the next one in the same view"},
    {KeyCommand::ToggleOthers, {Qt::Key_X, kNone}, kEngagements, "hide all others, or show all again"},
    {KeyCommand::ToggleGhosts,
     {Qt::Key_G, kNone},
     kEngagements,
     "ghosts: all others as thin lines and points, on or off"},
    {KeyCommand::CycleGhostColours,
     {Qt::CTRL | Qt::Key_G, kNone},
     kEngagements,
     "what ghosts are coloured by: closest approach, or whether decoyed"},
    {KeyCommand::CycleGhostAlignment,
     {Qt::SHIFT | Qt::Key_G, kNone},
     kEngagements,
     "when ghosts are in step with the selected one: at launch, first flare or closest approach"},
    {KeyCommand::TakeOut,
     {Qt::Key_Delete, kNone},
     kEngagements,
     "take the selected one out of the viewer; its file stays"},

    {KeyCommand::ToggleReadout, {Qt::Key_H, kNone}, kWindow, "read-out of the encounter, on or off"},
    {KeyCommand::CycleReadoutCorner, {Qt::SHIFT | Qt::Key_H, kNone}, kWindow, "read-out in the next corner"},
    {KeyCommand::CycleUnit, {Qt::Key_U, kNone}, kWindow, "what lengths are called: units, ft or m; no number changes"},
    {KeyCommand::ToggleNames, {Qt::Key_N, kNone}, kWindow, "names beside the bodies, on or off"},
    {KeyCommand::TogglePlots, {Qt::Key_P, kNone}, kWindow, "plots of the selected engagement over time, on or off"},
    {KeyCommand::ToggleRuns, {Qt::Key_T, kNone}, kWindow, "table of the loaded runs and their measures, on or off"},
    {KeyCommand::OpenView,
     {Qt::Key_W, kNone},
     kWindow,
     "another window onto the same moment, up to four; 1 to 5 choose its view there"},
    {KeyCommand::ToggleLineStyles,
     {Qt::Key_S, kNone},
     kWindow,
     "paths told apart by line styles (target solid, threat dashed, flares dotted), on or off"},
    {KeyCommand::CycleAntialiasing,
     {Qt::Key_A, kNone},
     kWindow,
     "anti-aliasing: none, 2, 4 or 8 samples a pixel, as far as the graphics go"},
    {KeyCommand::CycleScale,
     {Qt::Key_B, kNone},
     kWindow,
     "scale of radiance: off, with a colour bar and what shows under the pointer, automatic"},
    {KeyCommand::CyclePalette, {Qt::SHIFT | Qt::Key_B, kNone}, kWindow, "colours: grey, inverted, viridis, inferno"},
    {KeyCommand::ScaleUp, {Qt::CTRL | Qt::Key_Up, kNone}, kWindow, "white at a greater radiance", kRepeats},
    {KeyCommand::ScaleDown, {Qt::CTRL | Qt::Key_Down, kNone}, kWindow, "white at a smaller radiance", kRepeats},
    {KeyCommand::ToggleFullScreen, {Qt::Key_F11, kNone}, kWindow, "full screen, on or off"},
    {KeyCommand::Screenshot, {Qt::Key_F12, kNone}, kWindow, "save a picture of the view"},
    {KeyCommand::ToggleRecording, {Qt::CTRL | Qt::Key_R, kNone}, kWindow, "record a movie, or end the recording"},
    {KeyCommand::Reload, {Qt::Key_F5, kNone}, kWindow, "read all files again; time, camera and view stay"},
    {KeyCommand::ShowKeys, {Qt::Key_F1, Qt::Key_Question}, kWindow, "list of the keys"},
    {KeyCommand::Exit, {Qt::CTRL | Qt::Key_C, kNone}, kWindow, "close the window"},
};

bool isOtherCharacter(Qt::Key key) {
    return key > Qt::Key_Space && key < Qt::Key_Escape && (key < Qt::Key_A || key > Qt::Key_Z);
}

QKeyCombination withoutTypingModifiers(QKeyCombination pressed) {
    Qt::KeyboardModifiers modifiers = pressed.keyboardModifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
    if (isOtherCharacter(pressed.key()))
        modifiers &= ~Qt::KeyboardModifiers(Qt::ShiftModifier);
    return QKeyCombination(modifiers, pressed.key());
}
} // namespace

std::span<const KeyRow> keyTable() {
    return kRows;
}

const KeyRow* keyRowOf(QKeyCombination pressed) {
    const QKeyCombination key = withoutTypingModifiers(pressed);
    const auto found = std::ranges::find_if(
        kRows, [key](const KeyRow& row) { return std::ranges::find(row.keys, key) != row.keys.end(); });
    return key == kNone || found == std::end(kRows) ? nullptr : found;
}

QString keyTexts(const KeyRow& row) {
    QStringList texts;
    for (const QKeyCombination key : row.keys)
        if (key != kNone)
            texts << QKeySequence(key).toString(QKeySequence::PortableText);
    return texts.join(QStringLiteral(", "));
}

QString keyTexts(KeyCommand command) {
    const auto* const row = std::ranges::find(kRows, command, &KeyRow::command);
    return row == std::end(kRows) ? QString() : keyTexts(*row);
}

QString keyTableAsMarkdown() {
    QString text;
    QLatin1String section;
    for (const KeyRow& row : kRows) {
        if (section != QLatin1String(row.section)) {
            section = QLatin1String(row.section);
            text += (text.isEmpty() ? QStringLiteral("### %1\n\n") : QStringLiteral("\n### %1\n\n")).arg(section) +
                    QStringLiteral("| key | what it does |\n|---|---|\n");
        }
        QString keys = keyTexts(row);
        keys.replace(QStringLiteral(", "), QStringLiteral("`, `"));
        text += QStringLiteral("| `%1` | %2 |\n").arg(keys, QLatin1String(row.effect));
    }
    return text;
}
} // namespace sorvane
