// Frames as picture files.
#pragma once

#include <mutex>
#include <thread>
#include <vector>

#include "frameoutput.h"
#include "framequeue.h"
#include "numberedname.h"
#include "problem.h"

namespace sorvane {
// Writes every frame into a file of its own, in the format of the name's extension, on as many threads as there are
// processors.
class PictureOutput : public FrameOutput {
public:
    PictureOutput(const NumberedName& name, std::int64_t frameCount);
    ~PictureOutput() override;

    bool add(std::int64_t number, QImage picture) override;
    bool finish() override;
    std::optional<sorvane::Problem> problem() const override;

private:
    void writeFrames();
    void end();

    NumberedName name_;
    FrameQueue queue_;
    mutable std::mutex mutex_;
    std::optional<sorvane::Problem> problem_; // the first one
    std::vector<std::thread> threads_;
};
} // namespace sorvane
