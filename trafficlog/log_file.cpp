// Opens, searches, adds and closes on every call, so that a killed host loses at most the tick in flight. The search
// runs over a buffer that one read of the file filled: a month costs a handful of system calls, not one per record.

#include "trafficlog/log_file.h"

#include "item/item_state.h"
#include "platform/format_text.h"
#include "platform/scoped.h"

namespace {

constexpr size_t kRecordsPerRead = 192;  // 2,304 bytes of stack: a handheld's frame stays below a page

void Append(std::span<wchar_t> path, const wchar_t* folder) {
    const size_t used = wcslen(path.data());
    FormatText(path.subspan(used), L"%s", folder);
}

bool MoveTo(HANDLE file, size_t offset) {
    return SetFilePointer(file, static_cast<LONG>(offset), nullptr, FILE_BEGIN) != INVALID_SET_FILE_POINTER;
}

void WriteRecord(HANDLE file, const TrafficLogRecord& record) {
    DWORD written = 0;
    WriteFile(file, &record, sizeof(record), &written, nullptr);
}

// Written anywhere else, the sums would count twice or overwrite another hour.
void RewriteRecord(HANDLE file, size_t offset, const TrafficLogRecord& record) {
    if (MoveTo(file, offset)) {
        WriteRecord(file, record);
    }
}

enum class Search { Found, NoRecord, Unreadable };

// Adds to the record of that hour if the file has it; otherwise the file stands at its end. A cut tail matches nothing,
// and what is appended later stands behind it.
Search AddToExistingRecord(HANDLE file, const TrafficLogRecord& increment) {
    TrafficLogRecord records[kRecordsPerRead];
    size_t offset = 0;
    size_t bytes = 0;
    do {
        if (!ReadLogRecordsPatiently(file, records, &bytes)) {
            return Search::Unreadable;
        }
        for (size_t i = 0; i < bytes / sizeof(TrafficLogRecord); ++i) {
            TrafficLogRecord& record = records[i];
            if (record.day == increment.day && record.hour == increment.hour) {
                record.received += increment.received;
                record.transmitted += increment.transmitted;
                RewriteRecord(file, offset + i * sizeof(record), record);
                return Search::Found;
            }
        }
        offset += bytes;
    } while (bytes != 0);
    return Search::NoRecord;
}

}  // namespace

void TrafficLogPath(int year, int month, std::span<wchar_t> path) {
    FormatText(path, L"%s\\%04d%02d.log", itemState.dataFolder, year, month);
}

bool EnsureDataFolders(HWND owner) {
    wchar_t path[MAX_PATH + 32] = {};
    if (!SHGetSpecialFolderPathW(owner, path, CSIDL_PROGRAM_FILES, FALSE)) {
        return false;
    }
    Append(path, L"\\Ostrik");
    CreateDirectoryW(path, nullptr);
    Append(path, L"\\Quorvane");
    return CreateDirectoryW(path, nullptr) != FALSE;
}

void LogTraffic(HWND owner, uint32_t received, uint32_t transmitted) {
    if (received == 0 && transmitted == 0) {
        return;
    }
    EnsureDataFolders(owner);
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    LogTrafficAt(now, received, transmitted);
}

void LogTrafficAt(const SYSTEMTIME& now, uint32_t received, uint32_t transmitted) {
    wchar_t path[kPathUnits + 16];
    TrafficLogPath(now.wYear, now.wMonth, path);
    const platform::ScopedHandle file(CreateFileW(path, GENERIC_READ | GENERIC_WRITE,
                                                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsOpen()) {
        return;
    }
    const TrafficLogRecord increment = {
        static_cast<int8_t>(now.wDay), static_cast<int8_t>(now.wHour), {}, received, transmitted};
    if (AddToExistingRecord(file.handle, increment) == Search::NoRecord) {
        WriteRecord(file.handle, increment);
    }
}

HANDLE OpenTrafficLog(int year, int month) {
    wchar_t path[kPathUnits + 16];
    TrafficLogPath(year, month, path);
    return CreateFileW(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

bool ReadLogRecords(HANDLE file, std::span<TrafficLogRecord> records, size_t* bytes) {
    memset(records.data(), 0, records.size_bytes());
    DWORD count = 0;
    if (!ReadFile(file, records.data(), static_cast<DWORD>(records.size_bytes()), &count, nullptr)) {
        return false;
    }
    *bytes = count;
    return true;
}

bool ReadLogRecordsPatiently(HANDLE file, std::span<TrafficLogRecord> records, size_t* bytes) {
    constexpr int kAttempts = 16;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        if (ReadLogRecords(file, records, bytes)) {
            return true;
        }
    }
    return false;
}
