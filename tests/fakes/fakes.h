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

struct ShownMessage {
    std::wstring text;
    std::wstring caption;
    UINT flags;
};
extern std::vector<ShownMessage> shownMessages;
void AnswerMessagesWith(int button);

// For the implementations: counts a call and tells whether it is scripted to fail.
bool IsScriptedToFail(const char* function);

}  // namespace fakes
