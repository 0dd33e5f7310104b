// One month's file as series.

#include "trafficlog/log_reader.h"

#include <gtest/gtest.h>

#include "tests/support/traffic_logs.h"

namespace {

constexpr CalendarDate kDay = {2006, 2, 5};

TrafficSeries Read(UsageMode mode, const CalendarDate& date, int expectedSlots) {
    TrafficSeries series;
    series.transmitted.fill(99);
    series.received.fill(99);
    series.maximum = 99;
    EXPECT_EQ(ReadTrafficLog(mode, date, series), expectedSlots);
    return series;
}

double Sum(const Series& series) {
    double sum = 0;
    for (const double value : series) {
        sum += value;
    }
    return sum;
}

TEST(Calendar, February_follows_the_Gregorian_rule) {
    for (const auto& [year, days] : {std::pair{2000, 29}, {1900, 28}, {2004, 29}, {2006, 28}, {2100, 28}}) {
        EXPECT_EQ(DaysInMonth(year, 2), days) << year;
    }
    int daysOfYear = 0;
    for (int month = 1; month <= 12; ++month) {
        daysOfYear += DaysInMonth(2006, month);
    }
    EXPECT_EQ(daysOfYear, 365);
    EXPECT_EQ(DaysInMonth(2006, 4), 30);
    EXPECT_STREQ(MonthAbbrev(1), L"Jan");
    EXPECT_STREQ(MonthAbbrev(12), L"Dec");
}

TEST(LogReader, Hours_stand_alone_and_days_are_summed) {
    const TrafficSeries none = Read(UsageMode::Hourly, kDay, 24);  // no file
    EXPECT_EQ(Sum(none.transmitted) + Sum(none.received) + none.maximum, 0);
    WriteLog(2006, 2, FullMonth(2006, 2, 2000, 1000));
    const TrafficSeries hours = Read(UsageMode::Hourly, kDay, 24);
    EXPECT_EQ(hours.transmitted[0], 1000);
    EXPECT_EQ(hours.received[23], 2000);
    EXPECT_EQ(hours.received[24], 0);
    EXPECT_EQ(hours.maximum, 2000);
    const TrafficSeries days = Read(UsageMode::Daily, kDay, 28);
    EXPECT_EQ(days.transmitted[0], 0);
    EXPECT_EQ(days.transmitted[1], 24000);
    EXPECT_EQ(days.received[28], 48000);
    EXPECT_EQ(days.received[29], 0);
    EXPECT_EQ(days.maximum, 48000);
}

TEST(LogReader, Of_two_records_of_an_hour_the_later_counts_but_the_maximum_stays) {
    WriteLog(2006, 2, LogRecord(5, 1, 500, 700) + LogRecord(5, 1, 20, 30) + LogRecord(6, 1, 10, 0xFFFFFFFF));
    const TrafficSeries hours = Read(UsageMode::Hourly, kDay, 24);
    EXPECT_EQ(hours.received[1], 20);
    EXPECT_EQ(hours.transmitted[1], 30);
    EXPECT_EQ(hours.maximum, 700);
    const TrafficSeries days = Read(UsageMode::Daily, kDay, 28);
    EXPECT_EQ(days.received[5], 520);
    EXPECT_EQ(days.maximum, 4294967295.0);
}

TEST(LogReader, Bytes_outside_the_series_are_skipped_and_inside_it_count) {
    Bytes log;
    for (const int value : {32, 127, 128, 255}) {
        log = log + LogRecord(value, 1, 9, 9) + LogRecord(5, value, 9, 9);
    }
    WriteLog(2006, 2, log + LogRecord(0, 31, 4, 4) + LogRecord(31, 0, 5, 5) + LogRecord(5, 31, 6, 6));
    const TrafficSeries days = Read(UsageMode::Daily, kDay, 28);
    EXPECT_EQ(days.received[0], 4);
    EXPECT_EQ(days.received[31], 5);
    EXPECT_EQ(days.received[5], 4 * 9 + 6);
    EXPECT_EQ(Sum(days.received), 4 + 5 + 4 * 9 + 6);
    const TrafficSeries hours = Read(UsageMode::Hourly, kDay, 24);
    EXPECT_EQ(hours.transmitted[31], 6);
    EXPECT_EQ(Sum(hours.transmitted), 6);
}

TEST(LogReader, A_cut_tail_counts_with_the_bytes_that_are_there) {
    const Bytes whole = LogRecord(5, 1, 0x00010203, 0x04050607);
    struct Row {
        size_t bytes;
        double received;
        double transmitted;
    };
    const Row rows[] = {{1, 0, 0}, {5, 3, 0}, {8, 0x010203, 0}, {10, 0x010203, 0x0607}, {12, 0x010203, 0x04050607}};
    for (const Row& row : rows) {
        WriteLog(2006, 2, LogRecord(6, 1, 1, 1) + Bytes(whole.begin(), whole.begin() + static_cast<long>(row.bytes)));
        const TrafficSeries days = Read(UsageMode::Daily, kDay, 28);
        EXPECT_EQ(days.received[5], row.received) << row.bytes;
        EXPECT_EQ(days.transmitted[5], row.transmitted) << row.bytes;
        EXPECT_EQ(days.received[6], 1);
    }
}

TEST(LogReader, A_file_longer_than_a_month_is_read_to_its_end) {
    Bytes log;
    for (int i = 0; i < 2000; ++i) {
        log = std::move(log) + LogRecord(5, 3, 1, 2);
    }
    WriteLog(2006, 2, log + LogRecord(7, 3, 8, 9));
    const TrafficSeries days = Read(UsageMode::Daily, kDay, 28);
    EXPECT_EQ(days.received[5], 2000);
    EXPECT_EQ(days.transmitted[7], 9);
}

}  // namespace
