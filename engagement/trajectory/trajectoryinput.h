// Opens trajectory files, plain or compressed.
#pragma once

#include <functional>
#include <memory>

#include <QIODevice>

class QString;

namespace sorvane {
// An open trajectory. Destroying the device closes the file, or ends the process that decompresses it.
struct TrajectoryInput {
    std::unique_ptr<QIODevice> device; // null when it could not be opened
    bool isProcess = false;

    // False when the program that decompresses the data failed. Waits for its end: first read what you want of them.
    bool cameWhole() const;
};

// Called before each piece of a file is read, and while a process delivers none; it may process events. False ends the
// reading: the device then has no more data, or few.
using ReadWatch = std::function<bool()>;

// Opens a regular file for reading in text mode. A name that ends in ".Z" (not ".z") is read through the program
// `uncompress`; this waits until the program has started and delivered its first data.
TrajectoryInput openTrajectory(const QString& path, ReadWatch watch = {});
} // namespace sorvane
