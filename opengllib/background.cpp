// One piece of work beside the thread that asked for it.
#include "background.h"

#include <mutex>
#include <vector>

namespace sorvane {
namespace {
struct Retired {
    std::thread thread;
    std::shared_ptr<std::atomic<bool>> hasEnded;
};

class RetiredThreads {
public:
    ~RetiredThreads() {
        for (Retired& retired : threads_)
            retired.thread.join();
    }

    void add(Retired added) {
        const std::scoped_lock lock(mutex_);
        std::erase_if(threads_, [](Retired& retired) {
            if (!*retired.hasEnded)
                return false;
            retired.thread.join();
            return true;
        });
        threads_.push_back(std::move(added));
    }

private:
    std::mutex mutex_;
    std::vector<Retired> threads_;
};
} // namespace

void retire(std::thread thread, std::shared_ptr<std::atomic<bool>> hasEnded) {
    static RetiredThreads retired;
    retired.add({std::move(thread), std::move(hasEnded)});
}
} // namespace sorvane
