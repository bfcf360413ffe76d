// Where a sub-command writes, and the standard streams of the process as such.
#include "standardstreams.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <iostream>
#include <streambuf>

#include <fcntl.h>
#include <unistd.h>

namespace sorvane {
namespace {
// A stream buffer over a file descriptor.
class DescriptorBuffer : public std::streambuf {
public:
    explicit DescriptorBuffer(int descriptor) : descriptor_(descriptor) {
        setp(buffer_.data(), buffer_.data() + buffer_.size());
    }

protected:
    int_type overflow(int_type next) override {
        if (sync() != 0)
            return traits_type::eof();
        if (!traits_type::eq_int_type(next, traits_type::eof()))
            sputc(traits_type::to_char_type(next));
        return traits_type::not_eof(next);
    }

    int sync() override {
        const char* at = pbase();
        while (at != pptr()) {
            const ssize_t written = ::write(descriptor_, at, static_cast<std::size_t>(pptr() - at));
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0)
                return -1;
            at += written;
        }
        setp(buffer_.data(), buffer_.data() + buffer_.size());
        return 0;
    }

private:
    int descriptor_;
    std::array<char, 1 << 16> buffer_{};
};
} // namespace

struct StandardStreams::Output {
    explicit Output(int opened) : descriptor(opened) {}

    int descriptor;
    DescriptorBuffer buffer{descriptor};
    std::ostream stream{&buffer};
};

StandardStreams::StandardStreams() {
    std::fflush(stdout);
    std::cout.flush();
    // Not a number that belongs to a closed standard stream: whoever reads or writes that one would get this.
    output_ = std::make_unique<Output>(::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
}

StandardStreams::~StandardStreams() {
    output_->stream.flush();
    std::fflush(stdout);
    std::cout.flush();
    ::dup2(output_->descriptor, STDOUT_FILENO);
    ::close(output_->descriptor);
}

Streams StandardStreams::streams() {
    return {output_->stream, std::cerr, ::isatty(STDERR_FILENO) != 0};
}
} // namespace sorvane
