// The countdown belongs to the thread of the test: peers and workers beside it are left alone.

#include "tests/fakes/faults.h"

#include <atomic>

namespace fakes {
namespace {

struct Countdown {
    int calls = 0;
    int nth = 0;
    Faults faults = Faults::Once;
    std::string failed = {};
};
thread_local Countdown countdown;
std::atomic<int> resources = 0;

}  // namespace

void FailCall(int nth, Faults faults) {
    countdown = {0, nth, faults};
}

int EndFaults() {
    countdown.nth = 0;
    return countdown.calls;
}

std::string FailedCall() {
    return countdown.failed;
}

int OpenResources() {
    return resources;
}

bool Fails(const char* function) {
    const int call = ++countdown.calls;
    const bool lasting = countdown.faults == Faults::FromThereOn;
    if (countdown.nth == 0 || call < countdown.nth || (call > countdown.nth && !lasting)) {
        return false;
    }
    if (call == countdown.nth) {
        countdown.failed = function;
    }
    return true;
}

void CountResource(int change) {
    resources += change;
}

}  // namespace fakes
