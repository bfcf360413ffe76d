// Frames as picture files.
#include "pictureoutput.h"

#include <algorithm>
#include <filesystem>

#include <QFile>
#include <QImageWriter>

#include "atomicfile.h"

namespace {
std::size_t threadCount(std::int64_t frameCount) {
    const auto processors = static_cast<std::int64_t>(std::max(std::thread::hardware_concurrency(), 1U));
    return static_cast<std::size_t>(std::clamp<std::int64_t>(frameCount, 1, processors));
}
} // namespace

QByteArray extensionOf(const std::string& path) {
    return QByteArray::fromStdString(std::filesystem::path(path).extension().string()).mid(1).toLower();
}

PictureOutput::PictureOutput(const NumberedName& name, std::int64_t frameCount)
    : name_(name), format_(extensionOf(name.path(0))), queue_(2 * threadCount(frameCount)) {
    for (std::size_t i = 0; i < threadCount(frameCount); ++i)
        threads_.emplace_back(&PictureOutput::writeFrames, this);
}

PictureOutput::~PictureOutput() {
    queue_.abandon();
    end();
}

bool PictureOutput::add(std::int64_t number, QImage picture) {
    return queue_.push({number, std::move(picture)});
}

bool PictureOutput::finish() {
    queue_.close();
    end();
    return !problem_;
}

std::optional<std::string> PictureOutput::problem() const {
    const std::lock_guard lock(mutex_);
    return problem_;
}

void PictureOutput::end() {
    for (std::thread& thread : threads_)
        thread.join();
    threads_.clear();
}

void PictureOutput::writeFrames() {
    while (const auto frame = queue_.pop()) {
        if (auto problem = write(*frame)) {
            const std::lock_guard lock(mutex_);
            if (!problem_)
                problem_ = std::move(problem);
            queue_.abandon();
        }
    }
}

std::optional<std::string> PictureOutput::write(const NumberedFrame& frame) const {
    const std::string path = name_.path(frame.number);
    AtomicFile file(path);
    if (file.problem())
        return file.problem();
    QFile device(QFile::decodeName(file.temporaryPath().c_str()));
    if (!device.open(QIODevice::WriteOnly))
        return path + ": " + device.errorString().toStdString();
    QImageWriter writer(&device, format_);
    // As the viewer saves them. For PNG it would only mean not to compress.
    if (format_ != "png")
        writer.setQuality(100);
    const bool isWritten = writer.write(frame.picture);
    // What is left in the device's buffer may be what finds the disk full.
    const bool isFlushed = device.flush();
    if (device.error() != QFileDevice::NoError || !isFlushed)
        return path + ": " + device.errorString().toStdString();
    if (!isWritten)
        return path + ": " + writer.errorString().toStdString();
    device.close();
    return file.commit() ? std::nullopt : file.problem();
}
