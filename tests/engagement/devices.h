// Devices that hand out their data in awkward ways.
#pragma once

#include <algorithm>
#include <utility>

#include <QByteArray>
#include <QIODevice>
#include <QList>

namespace sorvane {
// A sequential device that gives at most a few bytes per read.
class TrickleDevice : public QIODevice {
public:
    TrickleDevice(QByteArray data, qint64 bytesPerRead) : data_(std::move(data)), bytesPerRead_(bytesPerRead) {
        open(QIODevice::ReadOnly | QIODevice::Text);
    }
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return data_.size() - at_ + QIODevice::bytesAvailable(); }

protected:
    qint64 readData(char* bytes, qint64 maximum) override {
        const qint64 length = std::min({maximum, bytesPerRead_, data_.size() - at_});
        std::copy_n(data_.cbegin() + at_, length, bytes);
        at_ += length;
        return length;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray data_;
    qint64 bytesPerRead_;
    qint64 at_ = 0;
};

// Like a process whose output arrives in pieces, one for each wait.
class PieceDevice : public QIODevice {
public:
    explicit PieceDevice(QList<QByteArray> pieces) : pieces_(std::move(pieces)) {
        open(QIODevice::ReadOnly | QIODevice::Text);
    }
    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override { return arrived_.size() + QIODevice::bytesAvailable(); }
    bool canReadLine() const override { return arrived_.contains('\n') || QIODevice::canReadLine(); }
    bool waitForReadyRead(int milliseconds) override {
        waits.append(milliseconds);
        if (pieces_.isEmpty())
            return false;
        arrived_ += pieces_.takeFirst();
        return true;
    }

    QList<int> waits;

protected:
    qint64 readData(char* bytes, qint64 maximum) override {
        const qint64 length = std::min<qint64>(maximum, arrived_.size());
        std::copy_n(arrived_.cbegin(), length, bytes);
        arrived_.remove(0, length);
        return length;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QList<QByteArray> pieces_;
    QByteArray arrived_;
};
} // namespace sorvane
