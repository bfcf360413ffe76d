// Writes pictures into files.
#include "picturefile.h"

#include <QFile>
#include <QImageWriter>

#include "atomicfile.h"

namespace sorvane {
QByteArray extensionOf(const std::string& path) {
    return QByteArray::fromStdString(std::filesystem::path(path).extension().string()).mid(1).toLower();
}

std::optional<sorvane::Problem> writePicture(const QImage& picture, const std::string& path) {
    AtomicFile file(path);
    if (file.problem())
        return file.problem();
    QFile device(QFile::decodeName(file.temporaryPath().c_str()));
    if (!device.open(QIODevice::WriteOnly))
        return path + ": " + device.errorString().toStdString();
    const QByteArray format = extensionOf(path);
    QImageWriter writer(&device, format);
    // As the viewer saves them. For PNG it would only mean not to compress.
    if (format != "png")
        writer.setQuality(100);
    const bool isWritten = writer.write(picture);
    // What is left in the device's buffer may be what finds the disk full.
    const bool isFlushed = device.flush();
    if (device.error() != QFileDevice::NoError || !isFlushed)
        return path + ": " + device.errorString().toStdString();
    if (!isWritten)
        return path + ": " + writer.errorString().toStdString();
    device.close();
    return file.commit() ? std::nullopt : file.problem();
}
} // namespace sorvane
