// One pass over the month's file.

#include "trafficlog/log_reader.h"

#include "platform/scoped.h"

namespace {

constexpr size_t kRecordsPerRead = 192;  // 2,304 bytes of stack: a handheld's frame stays below a page

void RaiseMaximum(double& maximum, double value) {
    if (value > maximum) {
        maximum = value;
    }
}

void TakeHour(const TrafficLogRecord& record, int day, TrafficSeries& series) {
    const int hour = SeriesSlot(record.hour);
    if (record.day != day || hour < 0) {
        return;
    }
    series.transmitted[hour] = record.transmitted;
    RaiseMaximum(series.maximum, series.transmitted[hour]);
    series.received[hour] = record.received;
    RaiseMaximum(series.maximum, series.received[hour]);
}

void AddToDay(const TrafficLogRecord& record, TrafficSeries& series) {
    const int day = SeriesSlot(record.day);
    if (day < 0) {
        return;
    }
    series.transmitted[day] += record.transmitted;
    RaiseMaximum(series.maximum, series.transmitted[day]);
    series.received[day] += record.received;
    RaiseMaximum(series.maximum, series.received[day]);
}

}  // namespace

int SeriesSlot(int8_t value) {
    return value >= 0 && value < kSeriesSlots ? value : -1;
}

size_t CountRecords(size_t bytes) {
    return (bytes + sizeof(TrafficLogRecord) - 1) / sizeof(TrafficLogRecord);
}

int ReadTrafficLog(UsageMode mode, const CalendarDate& date, TrafficSeries& series) {
    constexpr int kHoursPerDay = 24;
    const bool hourly = mode == UsageMode::Hourly;
    const int slotCount = hourly ? kHoursPerDay : DaysInMonth(date.year, date.month);
    series = {};
    const platform::ScopedHandle file(OpenTrafficLog(date.year, date.month));
    if (!file.IsOpen()) {
        return slotCount;
    }
    TrafficLogRecord records[kRecordsPerRead];
    size_t bytes = 0;
    while (ReadLogRecords(file.handle, records, &bytes) && bytes != 0) {
        for (const TrafficLogRecord& record : std::span(records, CountRecords(bytes))) {
            if (hourly) {
                TakeHour(record, date.day, series);
            } else {
                AddToDay(record, series);
            }
        }
    }
    return slotCount;
}
