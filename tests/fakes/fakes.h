// tests/fakes/fakes.h - the strings by which native tests pull the system's stand-in: clock, messages, workers.
#pragma once

#include "platform/system.h"
#include "tests/fakes/faults.h"

#include <filesystem>
#include <string>
#include <vector>

namespace fakes {

// Empties the system: an empty temporary folder as "\", an empty registry, no message shown. Runs before every test.
void ResetSystem();

// What "\" is.
const std::filesystem::path& Root();

void SetLocalTime(const SYSTEMTIME& now);
void SetTimeZone(DWORD result, LONG biasMinutes);

// Outcomes of the next waits on events, each after that much time of a clock that then stands still between waits;
// later ones are signalled. A wait longer than its time-out times out.
struct WaitOutcome {
    DWORD result;
    DWORD error = 0;
    DWORD afterMs = 0;
};
void ScriptWaits(const std::vector<WaitOutcome>& outcomes);

// Time-outs that the waits on events were given.
extern std::vector<DWORD> waitedMs;

struct ShownMessage {
    std::wstring text;
    std::wstring caption;
    UINT flags;
};
extern std::vector<ShownMessage> shownMessages;
void AnswerMessagesWith(int button);

// Waits until no worker runs any more; false after the time-out.
bool WaitForWorkers(int seconds);

// Workers run to their end within StartWorker, so that their calls count among the caller's.
extern bool workersRunInline;

}  // namespace fakes
