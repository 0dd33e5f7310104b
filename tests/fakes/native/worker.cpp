// Workers are real threads; how many still run is known, so that a test can wait for their end.

#include "platform/worker.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

#include "tests/fakes/fakes.h"

namespace {

std::mutex lock;
std::condition_variable changed;
int running = 0;

}  // namespace

namespace fakes {

bool workersRunInline = false;

bool WaitForWorkers(int seconds) {
    std::unique_lock held(lock);
    return changed.wait_for(held, std::chrono::seconds(seconds), [] { return running == 0; });
}

}  // namespace fakes

namespace platform {

bool StartWorker(void (*work)(void*), void* argument) {
    if (fakes::Fails("StartWorker")) {
        return false;
    }
    if (fakes::workersRunInline) {
        work(argument);
        return true;
    }
    const std::lock_guard held(lock);
    ++running;
    std::thread([=] {
        work(argument);
        const std::lock_guard ended(lock);
        --running;
        changed.notify_all();
    }).detach();
    return true;
}

}  // namespace platform
