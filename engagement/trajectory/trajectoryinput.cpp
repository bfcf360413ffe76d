// Opens trajectory files, plain or compressed.
#include "trajectoryinput.h"

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>

#include "inputfile.h"
#include "linereading.h"

namespace sorvane {
namespace {
// Room for several of the decompressor's writes, so that it goes on while the reader parses. More than the default
// limit for one pipe would be refused.
constexpr int kPipeBytes = 1 << 20;

class Decompressor final : public QProcess {
public:
    explicit Decompressor(ReadWatch watch) : watch_(std::move(watch)) {}
    ~Decompressor() override {
        // It may be blocked on a full pipe when the reader stopped early.
        closeReadChannel(StandardOutput);
        kill();
        waitForFinished(-1);
    }

    // In short waits with the watch before each. What it calls may take in data, too.
    bool waitForReadyRead(int milliseconds) override {
        constexpr qint64 kMilliseconds = 50;
        if (!watch_)
            return QProcess::waitForReadyRead(milliseconds);
        const qint64 before = bytesAvailable();
        const QDeadlineTimer deadline(milliseconds);
        do {
            if (!watch_()) {
                watch_ = {};
                kill();
                return false;
            }
            if (bytesAvailable() > before)
                return true;
            const qint64 most = std::min(kMilliseconds, deadline.remainingTime());
            if (QProcess::waitForReadyRead(static_cast<int>(most)))
                return true;
        } while (state() != NotRunning && !deadline.hasExpired());
        return false;
    }

private:
    ReadWatch watch_;
};

class WatchedFile final : public QFile {
public:
    explicit WatchedFile(ReadWatch watch) : watch_(std::move(watch)) {}

protected:
    qint64 readData(char* data, qint64 mostBytes) override {
        return watch_ && !watch_() ? 0 : QFile::readData(data, mostBytes);
    }

private:
    ReadWatch watch_;
};

int openRegularFile(const QString& path) {
    return sorvane::openRegularFile(QFile::encodeName(path).toStdString());
}

std::unique_ptr<QIODevice> openCompressed(const QString& path, ReadWatch watch) {
    const int descriptor = openRegularFile(path);
    if (descriptor < 0)
        return nullptr;
    ::close(descriptor);

    auto process = std::make_unique<Decompressor>(std::move(watch));
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->setChildProcessModifier([] { ::fcntl(STDOUT_FILENO, F_SETPIPE_SZ, kPipeBytes); });
    // A leading minus would make the path an option.
    const QString argument = path.startsWith(u'-') ? QStringLiteral("./") + path : path;
    process->start(
        QStringLiteral("uncompress"), {QStringLiteral("-c"), argument}, QIODevice::ReadOnly | QIODevice::Text);
    if (!process->waitForStarted(kProcessWaitMilliseconds))
        return nullptr;
    process->setReadChannel(QProcess::StandardOutput);
    process->waitForReadyRead(kProcessWaitMilliseconds);
    return process;
}

std::unique_ptr<QIODevice> openPlain(const QString& path, ReadWatch watch) {
    const int descriptor = openRegularFile(path);
    if (descriptor < 0)
        return nullptr;
    auto file = std::make_unique<WatchedFile>(std::move(watch));
    if (!file->open(descriptor, QIODevice::ReadOnly | QIODevice::Text, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return nullptr;
    }
    return file;
}
} // namespace

bool TrajectoryInput::cameWhole() const {
    auto* const process = isProcess ? qobject_cast<QProcess*>(device.get()) : nullptr;
    if (process == nullptr)
        return true;
    process->waitForFinished(-1);
    return process->exitStatus() == QProcess::NormalExit && process->exitCode() == 0;
}

TrajectoryInput openTrajectory(const QString& path, ReadWatch watch) {
    if (path.endsWith(QStringLiteral(".Z")))
        return {openCompressed(path, std::move(watch)), true};
    return {openPlain(path, std::move(watch)), false};
}
} // namespace sorvane
