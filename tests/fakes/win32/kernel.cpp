// All but files: memory, text conversion, clock, events, workers, message boxes and the registry.
#include <algorithm>
#include <cstdlib>
#include <ctime>

#include "platform/worker.h"
#include "tests/fakes/fakes.h"
#include "tests/support/data_folder.h"

namespace fakes {

static DWORD lastError = 0;

void ResetSystem() {
    countdown = {};
    ResetFiles();
    keys.clear();
    workersRunInline = false;
    script = {};
    shownMessages.clear();
}

}  // namespace fakes

using namespace fakes;

void ResetSystemForTest() {
    ResetSystem();
}

DWORD GetLastError() {
    return lastError;
}

void* LocalAlloc(UINT, size_t bytes) {
    const bool fails = Fails("LocalAlloc");
    openResources += fails ? 0 : 1;
    return fails ? nullptr : std::calloc(1, std::max<size_t>(bytes, 1));
}

void* LocalFree(void* memory) {
    openResources -= memory == nullptr ? 0 : 1;
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

void GetLocalTime(SYSTEMTIME* now) {
    *now = script.localTime;
}

DWORD GetTickCount() {
    return script.tickCount;
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
    const auto words = [](auto... numbers) { return SYSTEMTIME{static_cast<WORD>(numbers)...}; };
    *systemTime = words(parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_wday, parts.tm_mday, parts.tm_hour,
                        parts.tm_min, parts.tm_sec, 0);
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
    script.waitedMs.push_back(timeoutMs);
    WaitOutcome outcome = {WAIT_OBJECT_0};
    if (Fails("WaitForSingleObject")) {
        outcome = {WAIT_FAILED, ERROR_INVALID_HANDLE};
    } else if (!script.waits.empty()) {
        outcome = script.waits.front();
        script.waits.erase(script.waits.begin());
    }
    script.tickCount += std::min(outcome.afterMs, timeoutMs);
    lastError = outcome.error;
    return outcome.afterMs > timeoutMs ? WAIT_TIMEOUT : outcome.result;
}

// Workers are real threads, unless a test wants them within the call.
bool platform::StartWorker(void (*work)(void*), void* argument) {
    if (Fails("StartWorker")) {
        return false;
    }
    if (workersRunInline) {
        work(argument);
    } else {
        workers.emplace_back(work, argument);
    }
    return true;
}

int MessageBoxW(HWND, const wchar_t* text, const wchar_t* caption, UINT flags) {
    if (Fails("MessageBoxW")) {
        return 0;
    }
    shownMessages.push_back({text, caption, flags});
    return script.messageAnswer;
}

LONG RegOpenKeyExW(HKEY, const wchar_t* name, DWORD, DWORD, HKEY* key) {
    const bool fails = Fails("RegOpenKeyExW"), isThere = !fails && keys.contains(name);
    *key = isThere ? &keys[name] : nullptr;
    openResources += isThere ? 1 : 0;
    return fails ? ERROR_ACCESS_DENIED : isThere ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
}

LONG RegCreateKeyExW(HKEY, const wchar_t* name, DWORD, wchar_t*, DWORD, DWORD, void*, HKEY* key, DWORD*) {
    const bool fails = Fails("RegCreateKeyExW");
    *key = fails ? nullptr : &keys[name];
    openResources += fails ? 0 : 1;
    return fails ? ERROR_ACCESS_DENIED : ERROR_SUCCESS;
}

LONG RegQueryValueExW(HKEY key, const wchar_t* name, DWORD*, DWORD* type, BYTE* data, DWORD* bytes) {
    const bool fails = Fails("RegQueryValueExW");
    if (fails || !key->values.contains(name)) {
        return fails ? ERROR_ACCESS_DENIED : ERROR_FILE_NOT_FOUND;
    }
    const auto& [itsType, value] = key->values[name];
    const bool fits = *bytes >= value.size();
    *type = itsType;
    *bytes = static_cast<DWORD>(value.size());
    std::copy_n(value.begin(), fits ? value.size() : 0, data);
    return fits ? ERROR_SUCCESS : ERROR_MORE_DATA;
}

LONG RegSetValueExW(HKEY key, const wchar_t* name, DWORD, DWORD type, const BYTE* data, DWORD bytes) {
    if (Fails("RegSetValueExW")) {
        return ERROR_ACCESS_DENIED;
    }
    key->values[name] = {type, std::vector<BYTE>(data, data + bytes)};
    return ERROR_SUCCESS;
}

LONG RegCloseKey(HKEY) {
    --openResources;
    return ERROR_SUCCESS;
}
