// Frames on their way from the thread that draws to those that write.
#include "framequeue.h"

#include <utility>

namespace sorvane {
bool FrameQueue::push(NumberedFrame frame) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return isClosed_ || frames_.size() < capacity_; });
    if (isClosed_)
        return false;
    frames_.push_back(std::move(frame));
    changed_.notify_all();
    return true;
}

std::optional<NumberedFrame> FrameQueue::pop() {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [this] { return isClosed_ || !frames_.empty(); });
    if (frames_.empty())
        return {};
    NumberedFrame frame = std::move(frames_.front());
    frames_.pop_front();
    changed_.notify_all();
    return frame;
}

void FrameQueue::close() {
    const std::lock_guard lock(mutex_);
    isClosed_ = true;
    changed_.notify_all();
}

void FrameQueue::abandon() {
    const std::lock_guard lock(mutex_);
    isClosed_ = true;
    frames_.clear();
    changed_.notify_all();
}
} // namespace sorvane
