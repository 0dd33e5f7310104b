// trafficlog/log_file.h - the monthly log: one 12-byte record per hour that saw traffic.
#pragma once

#include "platform/system.h"

#include <span>

// One record, little-endian, as it lies in the file.
struct TrafficLogRecord {
    int8_t day;   // 1 to 31, local time
    int8_t hour;  // 0 to 23, local time
    uint8_t reserved[2];
    uint32_t received;  // bytes of that hour, modulo 2^32
    uint32_t transmitted;
};
static_assert(sizeof(TrafficLogRecord) == 12);

// Full path of a month's file: the data folder, then "\%04d%02d.log".
void TrafficLogPath(int year, int month, std::span<wchar_t> path);

// Creates the default folders under the Program Files folder, whatever folder the log itself goes to. False when the
// last creation failed (it does when the folder exists) or the Program Files folder is unknown.
bool EnsureDataFolders(HWND owner);

// Adds one tick's increments (bytes) to the record of the current local hour, creating month file and record as needed.
// Nothing happens when both are 0. A file that cannot be opened loses this tick's increments and nothing else; the sums
// wrap at 2^32.
void LogTraffic(HWND owner, uint32_t received, uint32_t transmitted);

// LogTraffic at a given local time, without the folders.
void LogTrafficAt(const SYSTEMTIME& now, uint32_t received, uint32_t transmitted);

// Opens an existing month for reading, shared with the writer. Null or INVALID_HANDLE_VALUE when there is none.
HANDLE OpenTrafficLog(int year, int month);

// Reads on from where the file stands, as many bytes as fit `records`; what the file does not supply is zero. False
// when the read fails; `bytes` is 0 at the end of the file and not a multiple of 12 where the file's tail was cut.
bool ReadLogRecords(HANDLE file, std::span<TrafficLogRecord> records, size_t* bytes);

// ReadLogRecords that tries a failing read again before it gives up.
bool ReadLogRecordsPatiently(HANDLE file, std::span<TrafficLogRecord> records, size_t* bytes);
