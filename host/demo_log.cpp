// A person's week: busy mornings and evenings, quiet nights, a large download now and then.

#include "host/demo_log.h"

#include "trafficlog/log_file.h"

#include <cstdio>
#include <vector>

namespace {

constexpr uint32_t kKilobyte = 1024;
constexpr int kHoursPerDay = 24;
constexpr int kMonths = 3;

// Kilobytes received in the hours of an ordinary day.
constexpr uint16_t kDay[kHoursPerDay] = {120, 0,   0,    0,   0,   0,   90,  700,  1900, 2400, 1600, 1100,
                                         800, 950, 1300, 900, 700, 600, 850, 1500, 2600, 3100, 2200, 800};

int DaysIn(int year, int month) {
    constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : kDays[month - 1];
}

// 0 to 255, scattered but the same for the same hour.
uint32_t Scatter(int year, int month, int day, int hour) {
    auto value = static_cast<uint32_t>(((year * 12 + month) * 31 + day) * kHoursPerDay + hour);
    value = (value ^ 61) ^ (value >> 16);
    value *= 0x27D4EB2D;
    return (value ^ (value >> 15)) & 0xFF;
}

TrafficLogRecord MakeHour(int year, int month, int day, int hour) {
    const uint32_t mood = Scatter(year, month, day, 0);
    const uint32_t chance = Scatter(year, month, day, hour);
    TrafficLogRecord record = {};
    record.day = static_cast<int8_t>(day);
    record.hour = static_cast<int8_t>(hour);
    record.received = kDay[hour] * (64 + mood / 2) / 128 * (128 + chance) / 256 * kKilobyte;
    record.transmitted = record.received / (5 + chance % 9);
    if (chance > 250) {  // a download
        record.received += (20 + mood / 8) * kKilobyte * kKilobyte;
    }
    return record;
}

std::vector<TrafficLogRecord> MakeMonth(int year, int month, const SYSTEMTIME& end) {
    const bool isLast = year == end.wYear && month == end.wMonth;
    const int lastDay = isLast ? end.wDay : DaysIn(year, month);
    std::vector<TrafficLogRecord> records;
    for (int day = 1; day <= lastDay; ++day) {
        const int hours = isLast && day == lastDay ? end.wHour : kHoursPerDay;
        for (int hour = 0; hour < hours; ++hour) {
            const TrafficLogRecord record = MakeHour(year, month, day, hour);
            if (record.received != 0) {
                records.push_back(record);
            }
        }
    }
    return records;
}

bool WriteMonth(const std::wstring& folder, int year, int month, const SYSTEMTIME& end) {
    wchar_t name[32];
    swprintf(name, 32, L"\\%04d%02d.log", year, month);
    const std::vector<TrafficLogRecord> records = MakeMonth(year, month, end);
    FILE* file = _wfopen((folder + name).c_str(), L"wb");
    if (file == nullptr) {
        return false;
    }
    const bool written = fwrite(records.data(), sizeof(TrafficLogRecord), records.size(), file) == records.size();
    return fclose(file) == 0 && written;
}

}  // namespace

bool WriteDemoLogs(const std::wstring& folder, const SYSTEMTIME& now) {
    for (int back = 0; back < kMonths; ++back) {
        const int months = now.wYear * 12 + now.wMonth - 1 - back;
        if (!WriteMonth(folder, months / 12, months % 12 + 1, now)) {
            return false;
        }
    }
    return true;
}
