// bench/logged_months.h - the log files that the measurements work on: one month as a tick meets it, ten full years.
#pragma once

#include "item/item_state.h"
#include "platform/scoped.h"
#include "tests/support/traffic_logs.h"
#include "trafficlog/export_writer.h"
#include "trafficlog/log_file.h"

inline constexpr size_t kRecordsPerMonth = 31 * 24;  // of full days

inline constexpr int kFirstYear = 1997;
inline constexpr int kYears = 10;
inline constexpr SYSTEMTIME kLastHour = {2006, 12, 0, 31, 23, 0, 0, 0};

// A month of that many records. The last of them is the hour of `now`, so that a tick searches through all.
inline void WriteMonthOf(size_t records, const SYSTEMTIME& now) {
    const size_t thisHour = static_cast<size_t>(now.wDay - 1) * 24 + now.wHour;
    const size_t first = thisHour + 1 + kRecordsPerMonth - records;
    Bytes month(records * sizeof(TrafficLogRecord));
    for (size_t i = 0; i < records; ++i) {
        const size_t hour = (first + i) % kRecordsPerMonth;
        month[i * sizeof(TrafficLogRecord)] = static_cast<uint8_t>(hour / 24 + 1);
        month[i * sizeof(TrafficLogRecord) + 1] = static_cast<uint8_t>(hour % 24);
    }
    WriteLog(now.wYear, now.wMonth, month);
}

inline void WriteTenYears() {
    for (int index = 0; index < kYears * 12; ++index) {
        const int year = kFirstYear + index / 12;
        WriteLog(year, index % 12 + 1, FullMonth(year, index % 12 + 1, 123456789, 98765432));
    }
}

// Reads every byte of them once and does nothing with it; the sum of the bytes read.
inline size_t ReadTenYears() {
    size_t sum = 0;
    for (int index = 0; index < kYears * 12; ++index) {
        const platform::ScopedHandle file(OpenTrafficLog(kFirstYear + index / 12, index % 12 + 1));
        uint8_t content[kRecordsPerMonth * sizeof(TrafficLogRecord) + 1];
        DWORD read = 0;
        ReadFile(file.handle, content, sizeof(content), &read, nullptr);
        sum += read;
    }
    return sum;
}

inline void ExportTenYears(const std::wstring& path) {
    ExportTraffic(path.c_str(), {{kFirstYear, 1, 1}, {kFirstYear + kYears - 1, 12, 31}});
}
