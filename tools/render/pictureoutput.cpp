// Frames as picture files.
#include "pictureoutput.h"

#include <algorithm>

#include "picturefile.h"

namespace sorvane {
namespace {
std::size_t threadCount(std::int64_t frameCount) {
    const auto processors = static_cast<std::int64_t>(std::max(std::thread::hardware_concurrency(), 1U));
    return static_cast<std::size_t>(std::clamp<std::int64_t>(frameCount, 1, processors));
}
} // namespace

PictureOutput::PictureOutput(const NumberedName& name, std::int64_t frameCount)
    : name_(name), queue_(2 * threadCount(frameCount)) {
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

std::optional<sorvane::Problem> PictureOutput::problem() const {
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
        if (auto problem = writePicture(frame->picture, name_.path(frame->number))) {
            const std::lock_guard lock(mutex_);
            if (!problem_)
                problem_ = std::move(problem);
            queue_.abandon();
        }
    }
}
} // namespace sorvane
