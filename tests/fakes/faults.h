// tests/fakes/faults.h - one countdown that every faked call consults, so that a test can make each call of an
// operation fail in turn; and how much of what the fakes handed out has not come back.
#pragma once

#include <atomic>
#include <string_view>

namespace fakes {

enum class Faults { Once, FromThereOn, OfItsFunction };

// Of the faked calls that this thread makes from now on, the n-th (0 is none) fails as that function does, and so do
// all after it, or all of its function. A write that fails writes nothing.
struct Countdown {
    int nth = 0;
    Faults faults = Faults::Once;
    int calls = 0;         // so far
    char failed[40] = {};  // the function that failed first
};
inline constinit thread_local Countdown countdown;

// Handles, keys and memory that were taken and not returned.
inline std::atomic<int> openResources = 0;
inline int OpenResources() {
    return openResources;
}

// For the fakes: counts a call and tells whether it must fail.
inline bool Fails(std::string_view function) {
    const int call = ++countdown.calls;
    if (call == countdown.nth) {
        function.copy(countdown.failed, sizeof(countdown.failed) - 1);
    }
    return countdown.nth != 0 && call >= countdown.nth &&
           (call == countdown.nth || countdown.faults == Faults::FromThereOn ||
            (countdown.faults == Faults::OfItsFunction && countdown.failed == function));
}

}  // namespace fakes
