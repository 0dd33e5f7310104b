// Clock, memory, text conversion, events and message boxes.
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <thread>

#include "tests/fakes/fakes.h"
#include "tests/fakes/win32/parts.h"

namespace fakes {

namespace {

struct Script {
    SYSTEMTIME localTime = {2006, 12, 5, 15, 10, 0, 0, 0};
    std::optional<DWORD> tickCount;
    DWORD zoneResult = 0;
    LONG zoneBias = 0;
    int messageAnswer = IDOK;
    std::vector<WaitOutcome> waits;
};
Script script;
DWORD lastError = 0;

}  // namespace

std::vector<ShownMessage> shownMessages;
std::vector<DWORD> waitedMs;

void ResetSystem() {
    EndFaults();
    ResetFiles();
    ResetRegistry();
    workersRunInline = false;
    script = {};
    waitedMs.clear();
    shownMessages.clear();
}

void SetLocalTime(const SYSTEMTIME& now) {
    script.localTime = now;
}

void SetTimeZone(DWORD result, LONG biasMinutes) {
    script.zoneResult = result;
    script.zoneBias = biasMinutes;
}

void ScriptWaits(const std::vector<WaitOutcome>& outcomes) {
    script.waits = outcomes;
    script.tickCount = 0xFFFFFF00;  // wraps during any longer wait
}

void AnswerMessagesWith(int button) {
    script.messageAnswer = button;
}

}  // namespace fakes

using namespace fakes;

DWORD GetLastError() {
    return lastError;
}

HLOCAL LocalAlloc(UINT, size_t bytes) {
    if (Fails("LocalAlloc")) {
        return nullptr;
    }
    CountResource(1);
    return std::calloc(1, std::max<size_t>(bytes, 1));
}

HLOCAL LocalFree(HLOCAL memory) {
    CountResource(memory == nullptr ? 0 : -1);
    std::free(memory);
    return nullptr;
}

// The stand-in's ANSI code page is Latin-1; callers have room for every character.
int MultiByteToWideChar(UINT, DWORD, const char* text, int bytes, wchar_t* out, int) {
    std::transform(text, text + bytes, out, [](char c) { return static_cast<unsigned char>(c); });
    return bytes;
}

int WideCharToMultiByte(UINT, DWORD, const wchar_t* text, int units, char* out, int, const char*, BOOL*) {
    std::transform(text, text + units, out, [](wchar_t c) { return c < 0x100 ? static_cast<char>(c) : '?'; });
    return units;
}

int _wcsicmp(const wchar_t* a, const wchar_t* b) {
    return wcscasecmp(a, b);
}

void GetLocalTime(SYSTEMTIME* now) {
    *now = script.localTime;
}

DWORD GetTickCount() {
    using namespace std::chrono;
    const auto now = duration_cast<milliseconds>(steady_clock::now().time_since_epoch());
    return script.tickCount.value_or(static_cast<DWORD>(now.count()));
}

void Sleep(DWORD ms) {
    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

DWORD GetTimeZoneInformation(TIME_ZONE_INFORMATION* zone) {
    zone->Bias = script.zoneBias;
    return Fails("GetTimeZoneInformation") ? TIME_ZONE_ID_INVALID : script.zoneResult;
}

BOOL FileTimeToSystemTime(const FILETIME* fileTime, SYSTEMTIME* systemTime) {
    if (Fails("FileTimeToSystemTime")) {
        return FALSE;
    }
    const uint64_t ticks = (static_cast<uint64_t>(fileTime->dwHighDateTime) << 32) | fileTime->dwLowDateTime;
    const time_t seconds = static_cast<time_t>(ticks / 10000000) - 11644473600;
    tm parts = {};
    gmtime_r(&seconds, &parts);
    const auto word = [](int number) { return static_cast<WORD>(number); };
    *systemTime = {word(parts.tm_year + 1900), word(parts.tm_mon + 1), word(parts.tm_wday), word(parts.tm_mday),
                   word(parts.tm_hour),        word(parts.tm_min),     word(parts.tm_sec),  0};
    return TRUE;
}

HANDLE CreateEventW(void*, BOOL, BOOL, const wchar_t*) {
    return new Closable;
}

BOOL CloseHandle(HANDLE handle) {
    if (handle != INVALID_HANDLE_VALUE) {
        delete static_cast<Closable*>(handle);
    }
    return TRUE;
}

DWORD WaitForSingleObject(HANDLE, DWORD timeoutMs) {
    waitedMs.push_back(timeoutMs);
    if (Fails("WaitForSingleObject")) {
        lastError = ERROR_INVALID_HANDLE;
        return WAIT_FAILED;
    }
    if (script.waits.empty()) {
        return WAIT_OBJECT_0;
    }
    const WaitOutcome outcome = script.waits.front();
    script.waits.erase(script.waits.begin());
    *script.tickCount += std::min(outcome.afterMs, timeoutMs);
    lastError = outcome.error;
    return outcome.afterMs > timeoutMs ? static_cast<DWORD>(WAIT_TIMEOUT) : outcome.result;
}

int MessageBoxW(HWND, const wchar_t* text, const wchar_t* caption, UINT flags) {
    if (Fails("MessageBoxW")) {
        return 0;
    }
    shownMessages.push_back({text, caption, flags});
    return script.messageAnswer;
}
