// The countdown belongs to the thread of the test: peers and workers beside it are left alone.

#include "tests/fakes/faults.h"

#include <atomic>

namespace fakes {
namespace {

thread_local struct {
    int calls;
    int nth;
    Faults faults;
    std::string failed;
} countdown;
std::atomic<int> resources = 0;

}  // namespace

void FailCall(int nth, Faults faults) {
    countdown = {0, nth, faults, {}};
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
    if (countdown.nth == 0 || call < countdown.nth) {
        return false;
    }
    if (call == countdown.nth) {
        countdown.failed = function;
    }
    return call == countdown.nth || countdown.faults == Faults::FromThereOn ||
           (countdown.faults == Faults::OfItsFunction && countdown.failed == function);
}

void CountResource(int change) {
    resources += change;
}

}  // namespace fakes
