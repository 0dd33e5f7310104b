// tests/support/traffic_logs.h - log files for tests: single records, and several years with every kind of damage.
#pragma once

#include "platform/format_text.h"
#include "tests/support/data_folder.h"
#include "trafficlog/calendar.h"

#include <string>

inline Bytes LogRecord(int day, int hour, uint32_t received, uint32_t transmitted) {
    Bytes bytes = {static_cast<uint8_t>(day), static_cast<uint8_t>(hour), 0xAB, 0xCD};
    for (const uint32_t value : {received, transmitted}) {
        for (int shift = 0; shift < 32; shift += 8) {
            bytes.push_back(static_cast<uint8_t>(value >> shift));
        }
    }
    return bytes;
}

inline Bytes operator+(Bytes a, const Bytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
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

struct RandomNumbers {
    uint32_t state = 20061205;
    uint32_t Next() { return (state = state * 1664525 + 1013904223) >> 4; }
};

// Hours of any size from a byte to a gigabyte, with gaps, in time order.
inline Bytes PatchyMonth(int year, int month, RandomNumbers& random) {
    Bytes content;
    for (int hour = 0; hour < DaysInMonth(year, month) * 24; ++hour) {
        if (random.Next() % 3 != 0) {
            const uint32_t received = random.Next() >> random.Next() % 28;
            content =
                std::move(content) + LogRecord(hour / 24 + 1, hour % 24, received, random.Next() >> random.Next() % 28);
        }
    }
    return content;
}

inline constexpr CalendarDate kFirstLoggedMonth = {2003, 11, 1};
inline constexpr CalendarDate kLastLoggedMonth = {2006, 12, 1};

// November 2003 to December 2006: patchy months, two without a file, an empty one, a full one near the fields' limit,
// cut tails, days and hours outside the series, days that the month does not have, an hour recorded twice.
inline void WriteYearsOfLogs() {
    RandomNumbers random;
    for (int index = 2003 * 12 + 10; index < 2007 * 12; ++index) {
        const int year = index / 12;
        const int month = index % 12 + 1;
        if (year == 2004 && (month == 6 || month == 12)) {
            continue;
        }
        WriteLog(year, month, PatchyMonth(year, month, random));
    }
    WriteLog(2004, 7, {});
    WriteLog(2005, 12, FullMonth(2005, 12, 0xFFFFFFF0, 0xFFFFFFFF));
    Bytes damaged = PatchyMonth(2005, 3, random);
    for (const int value : {0, 24, 31, 32, 40, 99, 128, 250}) {
        damaged = std::move(damaged) + LogRecord(value, 1, random.Next(), random.Next()) +
                  LogRecord(5, value, random.Next(), random.Next());
    }
    WriteLog(2005, 3, damaged);
    WriteLog(2005, 4, PatchyMonth(2005, 4, random) + LogRecord(31, 0, 7, 9));
    for (const size_t bytesLeft : {1, 2, 6, 9, 11}) {
        Bytes cut = PatchyMonth(2006, static_cast<int>(bytesLeft), random) + LogRecord(3, 7, 0x01020304, 0x05060708);
        cut.resize(cut.size() - 12 + bytesLeft);
        WriteLog(2006, static_cast<int>(bytesLeft), cut);
    }
}
