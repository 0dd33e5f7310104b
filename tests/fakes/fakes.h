// tests/fakes/fakes.h - the strings by which native tests pull the system's stand-in: clock, failures, messages.
#pragma once

#include "platform/system.h"

#include <filesystem>
#include <string>
#include <vector>

namespace fakes {

// Empties the system: an empty temporary folder as "\", an empty registry, no scripted failure, no message shown. Runs
// before every test.
void ResetSystem();

// What "\" is.
const std::filesystem::path& Root();

// The n-th call (1 is the next one) of a system function, and `times` - 1 after it, fail as that function does. A write
// that fails writes nothing.
void FailCall(const std::string& function, int nth, int times = 1);
// How often a function was called since the reset or the last FailCall of it.
int CallCount(const std::string& function);

void SetLocalTime(const SYSTEMTIME& now);
void SetTickCount(DWORD ms);
void SetTimeZone(DWORD result, LONG biasMinutes);

// Outcomes of the next waits on events, each after that much time of a clock that then stands still between waits;
// later ones are signalled. A wait longer than its time-out times out.
struct WaitOutcome {
    DWORD result;
    DWORD error = 0;
    DWORD afterMs = 0;
};
void ScriptWaits(std::vector<WaitOutcome> outcomes);
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

// For the implementations: counts a call and tells whether it is scripted to fail.
bool IsScriptedToFail(const char* function);

}  // namespace fakes
