// The pictures of a set: its table of runs and its ghosts.
#pragma once

#include <QDir>

namespace sorvane {
// False when one can't be written. Needs what the viewer's window needs.
bool takeSetPictures(const QDir& pictures);
} // namespace sorvane
