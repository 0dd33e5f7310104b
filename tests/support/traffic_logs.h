// tests/support/traffic_logs.h - log files for tests: single records and whole months.
#pragma once

#include "platform/format_text.h"
#include "tests/support/data_folder.h"
#include "trafficlog/calendar.h"

#include <string>

inline Bytes LogRecord(int day, int hour, uint32_t received, uint32_t transmitted) {
    Bytes bytes = {static_cast<uint8_t>(day), static_cast<uint8_t>(hour), 0xAB, 0xCD, 0, 0, 0, 0, 0, 0, 0, 0};
    memcpy(&bytes[4], &received, sizeof(received));
    memcpy(&bytes[8], &transmitted, sizeof(transmitted));
    return bytes;
}

inline void WriteLog(int year, int month, const Bytes& content) {
    wchar_t name[16];
    FormatText(name, L"%04d%02d.log", year, month);
    WriteWholeFile(name, content);
}

// A month in which every hour saw that much.
inline Bytes FullMonth(int year, int month, uint32_t received, uint32_t transmitted) {
    Bytes content;
    for (int hour = 0; hour < DaysInMonth(year, month) * 24; ++hour) {
        content = std::move(content) + LogRecord(hour / 24 + 1, hour % 24, received, transmitted);
    }
    return content;
}
