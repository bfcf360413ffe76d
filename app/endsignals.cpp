// Ends the program in order when the system asks for it.
#include "endsignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>
#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace sorvane {
namespace {
std::atomic<int> came = 0;
int wakeUp[2] = {-1, -1}; // a pipe, since little else may be done in a handler
static_assert(std::atomic<int>::is_always_lock_free);

void remember(int signal) {
    const int error = errno;
    came = signal;
    [[maybe_unused]] const ssize_t written = ::write(wakeUp[1], "", 1); // a full pipe wakes up as well
    errno = error;
}
} // namespace

EndSignals::EndSignals() {
    if (::pipe2(wakeUp, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* const notifier = new QSocketNotifier(wakeUp[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [notifier] {
        notifier->setEnabled(false);
        QCoreApplication::exit();
    });
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        ::sigaction(kSignals[i], nullptr, &before_[i]);
        if (before_[i].sa_handler == SIG_IGN)
            continue;
        struct sigaction action = {};
        action.sa_handler = remember;
        action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND); // a second one ends a program that is busy
        sigemptyset(&action.sa_mask);
        ::sigaction(kSignals[i], &action, nullptr);
    }
}

EndSignals::~EndSignals() {
    if (wakeUp[0] < 0)
        return;
    for (std::size_t i = 0; i < kSignals.size(); ++i)
        ::sigaction(kSignals[i], &before_[i], nullptr);
    for (int& end : wakeUp) {
        ::close(end);
        end = -1;
    }
}

bool EndSignals::hasCome() {
    return came != 0;
}

void EndSignals::endBySignal() {
    const int signal = came;
    if (signal == 0)
        return;
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}
} // namespace sorvane
