// Anti-aliasing: several samples a pixel.
#pragma once

#include <functional>
#include <vector>

namespace sorvane {
// The numbers of samples a pixel that people choose among: 0 for none, then 2, 4 and 8, as far as the current GL
// context goes.
std::vector<int> sampleChoices();

// The number of samples to begin with: 4 on a graphics processor, none where the current GL context draws in software.
int defaultSamples();

// Draws frames with several samples a pixel into framebuffers that have one. The member functions and, once something
// has been drawn so, the destructor need the context current.
class SampledFrame {
public:
    SampledFrame() = default;
    ~SampledFrame();
    SampledFrame(const SampledFrame&) = delete;
    SampledFrame& operator=(const SampledFrame&) = delete;

    // Calls `drawFrame`, which clears and draws the part of the current framebuffer that the viewport covers, so that
    // the framebuffer's pixels become the means of so many samples each. With no samples, or more than the context
    // has, it draws directly. The current framebuffer is the same at the end.
    void draw(int samples, const std::function<void()>& drawFrame);

private:
    bool bind(int samples);

    unsigned framebuffer_ = 0;
    unsigned colour_ = 0;
    unsigned depth_ = 0;
    int size_[3] = {}; // width, height, samples
};
} // namespace sorvane
