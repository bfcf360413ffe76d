// Lets long work end in order when the process is asked to stop.
#include "interrupt.h"

#include <atomic>

namespace sorvane {
namespace {
std::atomic<int> asked = 0;
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler sets it");

constexpr std::array<int, 4> kSignals = {SIGINT, SIGTERM, SIGHUP, SIGXFSZ};

void remember(int signal) {
    asked = signal;
}
} // namespace

Interrupt::Interrupt() {
    asked = 0;
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], nullptr, &before_[i]);
        if (before_[i].sa_handler == SIG_IGN)
            continue;
        struct sigaction action = {};
        action.sa_handler = kSignals[i] == SIGXFSZ ? SIG_IGN : remember;
        action.sa_flags = SA_RESTART;
        sigemptyset(&action.sa_mask);
        ::sigaction(kSignals[i], &action, nullptr);
    }
}

Interrupt::~Interrupt() {
    for (std::size_t i = 0; i < kSignals.size(); ++i)
        ::sigaction(kSignals[i], &before_[i], nullptr);
}

int Interrupt::requested() {
    return asked;
}
} // namespace sorvane
