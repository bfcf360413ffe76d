// Saves the view as a picture file.
#include "imageexport.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QImageReader>
#include <QMessageBox>

namespace sorvane {
namespace {
constexpr QSize kExportedSize(640, 480);

void showError(QWidget& parent, const char* text) {
    QMessageBox::critical(
        &parent, QCoreApplication::translate("new_sorvane", "Error"), QCoreApplication::translate("new_sorvane", text));
}
} // namespace

QString imageFormatOf(const QString& fileName) {
    return fileName.mid(fileName.lastIndexOf(QLatin1Char('.'), -2) + 1).toLower();
}

void exportImage(QWidget& parent, const QImage& view, const QString& fileName) {
    if (fileName.lastIndexOf(QLatin1Char('.'), -2) < 0)
        showError(parent, "No File Type Specified"); // and go on: no format is called as the whole name
    const QByteArray format = imageFormatOf(fileName).toUtf8();
    if (!QImageReader::supportedImageFormats().contains(format)) {
        showError(parent, "Unknown Export File Type");
        return;
    }
    const QImage exported = view.scaled(kExportedSize, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    constexpr int kQuality = 100;
    // By way of memory, since not all of Qt's picture formats notice that a disk is full.
    QBuffer encoded;
    QFile file(fileName);
    const bool isSaved = encoded.open(QIODevice::WriteOnly) && exported.save(&encoded, format.constData(), kQuality) &&
                         file.open(QIODevice::WriteOnly) && file.write(encoded.data()) == encoded.size() &&
                         file.flush();
    file.close();
    if (!isSaved || file.error() != QFileDevice::NoError)
        showError(parent, "Could not create file");
}
} // namespace sorvane
