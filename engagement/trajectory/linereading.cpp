// Reads a trajectory's logical lines one at a time from a device, which may be a running process.
#include "linereading.h"

#include <algorithm>
#include <optional>

#include <QByteArray>
#include <QIODevice>
#include <QProcess>

using namespace sorvane;

namespace {
constexpr qsizetype kPieceBytes = 4096;

// Text mode drops a lone carriage return or keeps it, depending on what happens to be buffered: lines are read without.
class TextModeOff {
public:
    explicit TextModeOff(QIODevice* device) : device_(device), wasOn_(device->isTextModeEnabled()) {
        device_->setTextModeEnabled(false);
    }
    ~TextModeOff() {
        if (device_->isOpen())
            device_->setTextModeEnabled(wasOn_);
    }
    TextModeOff(const TextModeOff&) = delete;
    TextModeOff& operator=(const TextModeOff&) = delete;

private:
    QIODevice* device_;
    bool wasOn_;
};

bool isRunningProcess(const QIODevice* device) {
    const auto* process = qobject_cast<const QProcess*>(device);
    return process != nullptr && process->state() != QProcess::NotRunning;
}

// One call reads one logical line.
class LineRead {
public:
    LineRead(QIODevice* device, bool isProcess) : device_(device), isProcess_(isProcess) {}

    // The next physical line, cut to kMaximumLineBytes; nothing at the end of the data.
    std::optional<QByteArray> physicalLine() {
        QByteArray line;
        bool any = false;
        char piece[kPieceBytes];
        while (true) {
            waitUntil([this] { return device_->canReadLine() || device_->bytesAvailable() >= kPieceBytes; });
            const qint64 length = device_->readLine(piece, kPieceBytes);
            if (length <= 0)
                break;
            any = true;
            const bool ended = piece[length - 1] == '\n';
            line.append(piece, std::min<qsizetype>(length - (ended ? 1 : 0), kMaximumLineBytes - line.size()));
            if (ended)
                break;
        }
        if (!any)
            return std::nullopt;
        return line;
    }

    void waitForMore() {
        waitUntil([this] { return device_->bytesAvailable() > 0; });
    }

    // A process that still runs but delivers nothing would cost another wait for every line to come.
    void giveUpWhenStalled() {
        if (ended_ && device_->bytesAvailable() == 0 && isRunningProcess(device_))
            device_->close();
    }

private:
    template <class Condition> void waitUntil(Condition condition) {
        if (!isProcess_)
            return;
        while (!ended_ && !condition())
            ended_ = !device_->waitForReadyRead(kProcessWaitMilliseconds);
    }

    QIODevice* device_;
    bool isProcess_;
    bool ended_ = false; // a wait brought nothing
};
} // namespace

QString readUncommented(QIODevice* device, bool isProcess) {
    if (!device->isOpen())
        return {};
    const TextModeOff textModeOff(device);
    LineRead read(device, isProcess);
    QString text;
    while (text.isNull()) {
        const std::optional<QByteArray> line = read.physicalLine();
        if (!line)
            break;
        text = simplifiedText(*line);
    }
    read.waitForMore();
    read.giveUpWhenStalled();
    return text;
}

namespace sorvane {
bool atEnd(QIODevice* device, [[maybe_unused]] bool isProcess) {
    return device->atEnd();
}

QString decodedText(QByteArrayView line) {
    const qsizetype nul = line.indexOf('\0');
    return QString::fromUtf8(nul < 0 ? line : line.first(nul));
}

QString simplifiedText(QByteArrayView line) {
    const QString text = decodedText(line);
    if (text.startsWith(u'#'))
        return {};
    const QString simplified = text.simplified();
    return simplified.isEmpty() ? QStringLiteral("") : simplified;
}
} // namespace sorvane
