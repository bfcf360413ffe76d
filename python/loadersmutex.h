// Keeps loaders to one thread at a time.
#pragma once

#include <mutex>

namespace sorvane {
// To be held while loaders of bodies and terrain run: what they keep is the process's. Never wait for it with Python's
// lock in hand.
std::mutex& loadersMutex();
} // namespace sorvane
