// Saves the view as a picture file.
#pragma once

#include <QImage>
#include <QString>

class QWidget;

namespace sorvane {
// The picture format that the name's ending asks for, in lower case: the text behind the last dot, sought from the
// second-last character. Without a dot it is the whole name.
QString imageFormatOf(const QString& fileName);

// Saves `view` at exactly 640 × 480 pixels, stretched and unsmoothed whatever its size, in the format of the name's
// ending, which must be one that Qt reads. Problems are critical boxes over `parent`.
void exportImage(QWidget& parent, const QImage& view, const QString& fileName);
} // namespace sorvane
