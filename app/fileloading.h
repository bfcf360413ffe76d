// Loads files into a window that is on show.
#pragma once

#include <QStringList>

class new_sorvane;

namespace sorvane {
// In their order, read on all processors. What comes of input meanwhile is dropped, but Escape ends the loading and
// Ctrl+C closes the window. Window and pointer live between the files, and the view says how far it has come. Also ends
// when the window is closed or the process is asked to end.
void loadFiles(new_sorvane& window, const QStringList& files);
} // namespace sorvane
