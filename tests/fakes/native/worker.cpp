// Workers are real threads; how many still run is known, so that a test can wait for their end.
#include "platform/worker.h"

#include <atomic>
#include <thread>

#include "tests/fakes/fakes.h"

static std::atomic<int> running = 0;

namespace fakes {

bool workersRunInline = false;

bool WaitForWorkers(int seconds) {
    for (int waits = 0; running != 0 && waits < seconds * 100; ++waits) {
        Sleep(10);
    }
    return running == 0;
}

}  // namespace fakes

bool platform::StartWorker(void (*work)(void*), void* argument) {
    if (fakes::Fails("StartWorker")) {
        return false;
    }
    if (fakes::workersRunInline) {
        work(argument);
        return true;
    }
    ++running;
    std::thread([=] {
        work(argument);
        --running;
    }).detach();
    return true;
}
