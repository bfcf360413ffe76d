// Frames on their way from the thread that draws to those that write.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>

#include <QImage>

namespace sorvane {
struct NumberedFrame {
    std::int64_t number = 0;
    QImage picture;
};

// Holds at most a given number of frames. Any thread may call any operation.
class FrameQueue {
public:
    explicit FrameQueue(std::size_t capacity) : capacity_(capacity) {}

    // Waits for room. False when the queue is closed; the frame is then dropped.
    bool push(NumberedFrame frame);
    // Waits for a frame. Nothing when the queue is closed and empty.
    std::optional<NumberedFrame> pop();
    // No more frames come; those that wait can still be taken.
    void close();
    // No more frames come, and those that wait are dropped.
    void abandon();

private:
    std::size_t capacity_;
    std::deque<NumberedFrame> frames_;
    bool isClosed_ = false;
    std::mutex mutex_;
    std::condition_variable changed_;
};
} // namespace sorvane
