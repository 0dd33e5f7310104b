// Scripted failures and the reset of the whole stand-in.

#include "tests/fakes/fakes.h"

#include <map>
#include <mutex>

#include "tests/fakes/win32/parts.h"

namespace fakes {
namespace {

struct Script {
    int calls = 0;
    int firstFailure = 0;
    int failures = 0;
};
std::map<std::string, Script> scripts;
std::mutex scriptsLock;

}  // namespace

void ResetSystem() {
    {
        const std::lock_guard lock(scriptsLock);
        scripts.clear();
    }
    ResetFiles();
    ResetRegistry();
    ResetClock();
    ResetMessages();
}

void FailCall(const std::string& function, int nth, int times) {
    const std::lock_guard lock(scriptsLock);
    scripts[function] = {0, nth, times};
}

int CallCount(const std::string& function) {
    const std::lock_guard lock(scriptsLock);
    return scripts[function].calls;
}

bool IsScriptedToFail(const char* function) {
    const std::lock_guard lock(scriptsLock);
    Script& script = scripts[function];
    ++script.calls;
    return script.failures > 0 && script.calls >= script.firstFailure &&
           script.calls < script.firstFailure + script.failures;
}

}  // namespace fakes
