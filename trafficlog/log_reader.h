// trafficlog/log_reader.h - one month's log as the two series that the charts draw.
#pragma once

#include "trafficlog/calendar.h"
#include "trafficlog/log_file.h"

#include <array>

enum class UsageMode : int { Daily = 0, Hourly = 1 };

// Bytes per slot, indexed by the hour (0 to 23) or by the day of the month (1 to 31; slot 0 is then unused).
inline constexpr int kSeriesSlots = 32;
using Series = std::array<double, kSeriesSlots>;

struct TrafficSeries {
    Series transmitted;
    Series received;
    double maximum;  // the largest single slot of either series
};

// Fills the series with the hours of that day, or with the days of its month. Returns how many slots the view has: 24,
// or the days of the month. A month without a log, or one that cannot be read, is empty.
//
// Hours are assigned, so of two records of one hour the later counts; days are summed. A record cut off by the end of
// the file counts with the bytes that are there. A record whose day or hour lies outside the series is skipped.
int ReadTrafficLog(UsageMode mode, const CalendarDate& date, TrafficSeries& series);

// Slot of a day or hour byte, or -1 when it lies outside a series.
int SeriesSlot(int8_t value);

// Number of records in that many bytes read at once, a cut one at the end included.
size_t CountRecords(size_t bytes);
