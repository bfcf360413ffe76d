// Frames as picture files.
#pragma once

#include <mutex>
#include <thread>
#include <vector>

#include <QByteArray>

#include "frameoutput.h"
#include "framequeue.h"
#include "numberedname.h"

// What follows the last dot of the path's last component, in lower case: the name of a format. Empty without one.
QByteArray extensionOf(const std::string& path);

// Writes every frame into a file of its own, in the format of the name's extension, on as many threads as there are
// processors.
class PictureOutput : public FrameOutput {
public:
    PictureOutput(const NumberedName& name, std::int64_t frameCount);
    ~PictureOutput() override;

    bool add(std::int64_t number, QImage picture) override;
    bool finish() override;
    std::optional<std::string> problem() const override;

private:
    void writeFrames();
    std::optional<std::string> write(const NumberedFrame& frame) const;
    void end();

    NumberedName name_;
    QByteArray format_;
    FrameQueue queue_;
    mutable std::mutex mutex_;
    std::optional<std::string> problem_; // the first one
    std::vector<std::thread> threads_;
};
