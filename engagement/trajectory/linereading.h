// Reads a trajectory's logical lines one at a time from a device, which may be a running process.
#pragma once

#include <QByteArrayView>
#include <QString>

class QIODevice;

namespace sorvane {
// What is kept of a physical line. The rest of a longer one is read and dropped, so that a file without line ends can't
// take more memory than this.
inline constexpr qsizetype kMaximumLineBytes = qsizetype{1} << 20;

// How long one wait for data from a process may take. When it runs out, the data has ended.
inline constexpr int kProcessWaitMilliseconds = 30000;
} // namespace sorvane

// The next line that does not begin with "#", white space simplified, without its line end: a blank line is an empty
// string, the end of the data a null one. Only a "#" in the very first column makes a comment. A carriage return is
// white space, whether or not the device is in text mode.
//
// With `isProcess`, waits until the device has buffered a whole line or has ended, and after taking a line until there
// is more, so that atEnd() may be asked next. A process that leaves a wait run out is closed.
QString readUncommented(QIODevice* device, bool isProcess);

namespace sorvane {
// The device's own end-of-data state. `isProcess` is not used; it is there because every reader passes it along.
bool atEnd(QIODevice* device, bool isProcess);

// The text of a physical line: the bytes up to the first NUL, taken as UTF-8.
QString decodedText(QByteArrayView line);

// The simplified text of a physical line as readUncommented gives it: the bytes up to the first NUL, taken as UTF-8
// whatever the locale says, each invalid sequence as U+FFFD. Null when the line is a comment.
QString simplifiedText(QByteArrayView line);
} // namespace sorvane
