// tests/fakes/fakes.h - the strings by which native tests pull the system's stand-in: clock, messages, workers.
#pragma once

#include "platform/system.h"
#include "tests/fakes/faults.h"

#include <filesystem>
#include <map>
#include <string>
#include <thread>
#include <vector>

struct FakeKey {
    std::map<std::wstring, std::pair<DWORD, std::vector<BYTE>>> values;  // type and data
};

namespace fakes {

// Empties the system: an empty temporary folder as "\", an empty registry, no message shown. Runs before every test.
void ResetSystem();

// What "\" is.
const std::filesystem::path& Root();
void ResetFiles();

// The registry's keys by full name, and values by theirs, which the product never spells in two ways.
inline std::map<std::wstring, FakeKey> keys;

// Everything that CloseHandle accepts: a file, a search, an event.
struct Closable {
    const int descriptor;
    std::vector<std::filesystem::path> matches;  // those that a search has not told yet, the next one last
    explicit Closable(int opened = -1) : descriptor(opened) { ++openResources; }
    ~Closable() {
        close(descriptor);
        --openResources;
    }
};

// The outcome of a wait on an event after that much time. One that takes longer than its time-out times out.
struct WaitOutcome {
    DWORD result;
    DWORD error = 0;
    DWORD afterMs = 0;
};

struct Script {
    SYSTEMTIME localTime = {2006, 12, 5, 15, 10, 0, 0, 0};
    DWORD tickCount = 0xFFFFFF00;  // goes on by waits alone, and wraps during any longer one
    DWORD zoneResult = 0;
    LONG zoneBias = 0;  // minutes
    int messageAnswer = IDOK;
    std::vector<WaitOutcome> waits;  // the next ones; later ones are signalled at once
    std::vector<DWORD> waitedMs;     // the time-outs that waits were given
};
inline Script script;

inline void SetLocalTime(const SYSTEMTIME& now) {
    script.localTime = now;
}
inline void AnswerMessagesWith(int button) {
    script.messageAnswer = button;
}

struct ShownMessage {
    std::wstring text, caption;
    UINT flags;
};
inline std::vector<ShownMessage> shownMessages;

// Threads that the system started; clearing it waits for their end. Without threads, workers run to their end within
// StartWorker, so that their calls count among the caller's.
inline std::vector<std::jthread> workers;
inline bool workersRunInline = false;

}  // namespace fakes
