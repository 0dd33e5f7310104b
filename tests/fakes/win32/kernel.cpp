// Clock, memory, text conversion, threads and message boxes.

#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <ctime>
#include <cwctype>
#include <memory>
#include <mutex>
#include <thread>

#include "tests/fakes/fakes.h"
#include "tests/fakes/win32/parts.h"

namespace fakes {
namespace {

thread_local DWORD lastError = 0;
SYSTEMTIME localTime = {};
std::atomic<DWORD> tickCount = 0;
std::atomic<bool> tickCountScripted = false;
DWORD zoneResult = 0;
LONG zoneBias = 0;
int messageAnswer = IDOK;

struct ThreadState {
    std::mutex lock;
    std::condition_variable changed;
    bool started = false;
    bool ended = false;
    LPTHREAD_START_ROUTINE routine = nullptr;
    void* argument = nullptr;
};

struct Thread : Closable {
    std::shared_ptr<ThreadState> state = std::make_shared<ThreadState>();
};

struct Event : Closable {};

std::vector<WaitOutcome> waits;

DWORD WaitForEvent(DWORD timeoutMs) {
    waitedMs.push_back(timeoutMs);
    if (waits.empty()) {
        return WAIT_OBJECT_0;
    }
    const WaitOutcome outcome = waits.front();
    waits.erase(waits.begin());
    tickCount += std::min(outcome.afterMs, timeoutMs);
    lastError = outcome.error;
    return outcome.afterMs > timeoutMs ? static_cast<DWORD>(WAIT_TIMEOUT) : outcome.result;
}

void* RunThread(void* argument) {
    const std::unique_ptr<std::shared_ptr<ThreadState>> state(static_cast<std::shared_ptr<ThreadState>*>(argument));
    ThreadState& thread = **state;
    {
        std::unique_lock lock(thread.lock);
        thread.changed.wait(lock, [&] { return thread.started; });
    }
    thread.routine(thread.argument);
    const std::lock_guard lock(thread.lock);
    thread.ended = true;
    thread.changed.notify_all();
    return nullptr;
}

}  // namespace

std::vector<ShownMessage> shownMessages;
std::vector<DWORD> waitedMs;

void ResetClock() {
    localTime = {2006, 12, 5, 15, 10, 0, 0, 0};
    tickCountScripted = false;
    zoneResult = 0;
    zoneBias = 0;
    waits.clear();
    waitedMs.clear();
}

void ResetMessages() {
    shownMessages.clear();
    messageAnswer = IDOK;
}

void SetLocalTime(const SYSTEMTIME& now) {
    localTime = now;
}

void SetTickCount(DWORD ms) {
    tickCount = ms;
    tickCountScripted = true;
}

void SetTimeZone(DWORD result, LONG biasMinutes) {
    zoneResult = result;
    zoneBias = biasMinutes;
}

void ScriptWaits(std::vector<WaitOutcome> outcomes) {
    waits = std::move(outcomes);
    SetTickCount(0xFFFFFF00);  // wraps during any longer wait
}

void AnswerMessagesWith(int button) {
    messageAnswer = button;
}

}  // namespace fakes

using namespace fakes;

DWORD GetLastError() {
    return lastError;
}

void SetLastError(DWORD error) {
    lastError = error;
}

HLOCAL LocalAlloc(UINT, size_t bytes) {
    return IsScriptedToFail("LocalAlloc") ? nullptr : std::calloc(1, bytes == 0 ? 1 : bytes);
}

HLOCAL LocalFree(HLOCAL memory) {
    std::free(memory);
    return nullptr;
}

// The stand-in's ANSI code page is Latin-1.
int MultiByteToWideChar(UINT, DWORD, const char* text, int bytes, wchar_t* out, int outUnits) {
    const int length = bytes < 0 ? static_cast<int>(strlen(text)) + 1 : bytes;
    if (outUnits == 0) {
        return length;
    }
    if (length > outUnits) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    for (int i = 0; i < length; ++i) {
        out[i] = static_cast<unsigned char>(text[i]);
    }
    return length;
}

int WideCharToMultiByte(UINT, DWORD, const wchar_t* text, int units, char* out, int outBytes, const char*, BOOL*) {
    const int length = units < 0 ? static_cast<int>(wcslen(text)) + 1 : units;
    if (outBytes == 0) {
        return length;
    }
    if (length > outBytes) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return 0;
    }
    for (int i = 0; i < length; ++i) {
        out[i] = text[i] < 0x100 ? static_cast<char>(text[i]) : '?';
    }
    return length;
}

int _wcsicmp(const wchar_t* a, const wchar_t* b) {
    while (*a != 0 && towlower(static_cast<wint_t>(*a)) == towlower(static_cast<wint_t>(*b))) {
        ++a;
        ++b;
    }
    return static_cast<int>(towlower(static_cast<wint_t>(*a))) - static_cast<int>(towlower(static_cast<wint_t>(*b)));
}

void GetLocalTime(SYSTEMTIME* now) {
    IsScriptedToFail("GetLocalTime");
    *now = localTime;
}

DWORD GetTickCount() {
    if (tickCountScripted) {
        return tickCount;
    }
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<DWORD>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

void Sleep(DWORD ms) {
    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

DWORD GetTimeZoneInformation(TIME_ZONE_INFORMATION* zone) {
    *zone = {};
    zone->Bias = zoneBias;
    return zoneResult;
}

BOOL FileTimeToSystemTime(const FILETIME* fileTime, SYSTEMTIME* systemTime) {
    const uint64_t ticks = (static_cast<uint64_t>(fileTime->dwHighDateTime) << 32) | fileTime->dwLowDateTime;
    const time_t seconds = static_cast<time_t>(ticks / 10000000) - 11644473600;
    tm parts = {};
    gmtime_r(&seconds, &parts);
    *systemTime = {static_cast<WORD>(parts.tm_year + 1900), static_cast<WORD>(parts.tm_mon + 1),
                   static_cast<WORD>(parts.tm_wday),        static_cast<WORD>(parts.tm_mday),
                   static_cast<WORD>(parts.tm_hour),        static_cast<WORD>(parts.tm_min),
                   static_cast<WORD>(parts.tm_sec),         0};
    return TRUE;
}

HANDLE CreateThread(void*, size_t, LPTHREAD_START_ROUTINE routine, void* argument, DWORD flags, DWORD*) {
    auto thread = std::make_unique<Thread>();
    thread->state->routine = routine;
    thread->state->argument = argument;
    thread->state->started = (flags & CREATE_SUSPENDED) == 0;
    auto* shared = new std::shared_ptr<ThreadState>(thread->state);
    pthread_t id = {};
    if (IsScriptedToFail("CreateThread") || pthread_create(&id, nullptr, RunThread, shared) != 0) {
        delete shared;
        return nullptr;
    }
    pthread_detach(id);
    return static_cast<Closable*>(thread.release());
}

DWORD ResumeThread(HANDLE handle) {
    ThreadState& thread = *static_cast<Thread*>(static_cast<Closable*>(handle))->state;
    const std::lock_guard lock(thread.lock);
    thread.started = true;
    thread.changed.notify_all();
    return 1;
}

HANDLE CreateEventW(void*, BOOL, BOOL, const wchar_t*) {
    return static_cast<Closable*>(new Event);
}

DWORD WaitForSingleObject(HANDLE handle, DWORD timeoutMs) {
    if (dynamic_cast<Event*>(static_cast<Closable*>(handle)) != nullptr) {
        return WaitForEvent(timeoutMs);
    }
    const std::shared_ptr<ThreadState> thread = static_cast<Thread*>(static_cast<Closable*>(handle))->state;
    std::unique_lock lock(thread->lock);
    const auto ended = [&] { return thread->ended; };
    if (timeoutMs == INFINITE) {
        thread->changed.wait(lock, ended);
        return WAIT_OBJECT_0;
    }
    return thread->changed.wait_for(lock, std::chrono::milliseconds(timeoutMs), ended) ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
}

int MessageBoxW(HWND, const wchar_t* text, const wchar_t* caption, UINT flags) {
    shownMessages.push_back({text, caption, flags});
    return messageAnswer;
}

BOOL MessageBeep(UINT) {
    IsScriptedToFail("MessageBeep");
    return TRUE;
}
