// Signals in tests.
#pragma once

#include <csignal>

// Handles a signal in a way of its own for the length of a test, whatever the process was started with.
class SignalHandling {
public:
    SignalHandling(int signal, void (*handler)(int)) : signal_(signal) {
        struct sigaction action = {};
        action.sa_handler = handler;
        ::sigaction(signal_, &action, &before_);
    }
    ~SignalHandling() { ::sigaction(signal_, &before_, nullptr); }
    SignalHandling(const SignalHandling&) = delete;
    SignalHandling& operator=(const SignalHandling&) = delete;

private:
    int signal_;
    struct sigaction before_ = {};
};
