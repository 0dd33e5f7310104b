// Clock, memory, text conversion, events and message boxes.

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <cwctype>
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

struct Event : Closable {};

std::vector<WaitOutcome> waits;

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
    if (Fails("LocalAlloc")) {
        return nullptr;
    }
    CountResource(1);
    return std::calloc(1, bytes == 0 ? 1 : bytes);
}

HLOCAL LocalFree(HLOCAL memory) {
    CountResource(memory == nullptr ? 0 : -1);
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
    return Fails("GetTimeZoneInformation") ? TIME_ZONE_ID_INVALID : zoneResult;
}

BOOL FileTimeToSystemTime(const FILETIME* fileTime, SYSTEMTIME* systemTime) {
    if (Fails("FileTimeToSystemTime")) {
        return FALSE;
    }
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

HANDLE CreateEventW(void*, BOOL, BOOL, const wchar_t*) {
    return static_cast<Closable*>(new Event);
}

DWORD WaitForSingleObject(HANDLE, DWORD timeoutMs) {
    waitedMs.push_back(timeoutMs);
    if (Fails("WaitForSingleObject")) {
        lastError = ERROR_INVALID_HANDLE;
        return WAIT_FAILED;
    }
    if (waits.empty()) {
        return WAIT_OBJECT_0;
    }
    const WaitOutcome outcome = waits.front();
    waits.erase(waits.begin());
    tickCount += std::min(outcome.afterMs, timeoutMs);
    lastError = outcome.error;
    return outcome.afterMs > timeoutMs ? static_cast<DWORD>(WAIT_TIMEOUT) : outcome.result;
}

int MessageBoxW(HWND, const wchar_t* text, const wchar_t* caption, UINT flags) {
    if (Fails("MessageBoxW")) {
        return 0;
    }
    shownMessages.push_back({text, caption, flags});
    return messageAnswer;
}
