// One month's file as series.
#include "trafficlog/log_reader.h"

#include <gtest/gtest.h>

#include <numeric>

#include "tests/support/traffic_logs.h"

namespace {

constexpr CalendarDate kDay = {2006, 2, 5};

TrafficSeries Read(UsageMode mode) {
    TrafficSeries series;
    series.transmitted.fill(99);
    series.received.fill(99);
    series.maximum = 99;
    EXPECT_EQ(ReadTrafficLog(mode, kDay, series), mode == UsageMode::Hourly ? 24 : 28);
    return series;
}

double Sum(const Series& series) {
    return std::accumulate(series.begin(), series.end(), 0.0);
}

TEST(Calendar, Months_have_their_days_and_names) {
    for (const auto& [year, days] : {std::pair{2000, 29}, {1900, 28}, {2004, 29}, {2006, 28}}) {
        EXPECT_EQ(DaysInMonth(year, 2), days) << year;
    }
    int daysOfYear = 0;
    std::wstring names;
    for (int month = 1; month <= 12; ++month) {
        daysOfYear += DaysInMonth(2006, month);
        names += MonthAbbrev(month);
    }
    EXPECT_EQ(daysOfYear, 365);
    EXPECT_EQ(DaysInMonth(2006, 4), 30);
    EXPECT_EQ(names, L"JanFebMarAprMayJunJulAugSepOctNovDec");
}

TEST(LogReader, Hours_stand_alone_and_days_are_summed) {
    const TrafficSeries none = Read(UsageMode::Hourly);  // no file
    EXPECT_EQ(Sum(none.transmitted) + Sum(none.received) + none.maximum, 0);
    WriteLog(2006, 2, FullMonth(2006, 2, 2000, 1000));
    const TrafficSeries hours = Read(UsageMode::Hourly);
    EXPECT_EQ(std::pair(hours.transmitted[0], hours.received[23]), std::pair(1000.0, 2000.0));
    EXPECT_EQ(std::pair(Sum(hours.transmitted), hours.maximum), std::pair(24000.0, 2000.0));
    const TrafficSeries days = Read(UsageMode::Daily);
    EXPECT_EQ(std::pair(days.transmitted[1], days.received[28]), std::pair(24000.0, 48000.0));
    EXPECT_EQ(std::pair(Sum(days.transmitted), days.maximum), std::pair(28 * 24000.0, 48000.0));
}

TEST(LogReader, Of_two_records_of_an_hour_the_later_counts_but_the_maximum_stays) {
    WriteLog(2006, 2, LogRecord(5, 1, 500, 700) + LogRecord(5, 1, 20, 30) + LogRecord(6, 1, 10, 0xFFFFFFFF));
    const TrafficSeries hours = Read(UsageMode::Hourly);
    EXPECT_EQ(std::tuple(hours.received[1], hours.transmitted[1], hours.maximum), std::tuple(20.0, 30.0, 700.0));
    const TrafficSeries days = Read(UsageMode::Daily);
    EXPECT_EQ(std::pair(days.received[5], days.maximum), std::pair(520.0, 4294967295.0));
}

TEST(LogReader, Bytes_outside_the_series_are_skipped_and_inside_it_count) {
    Bytes log;
    for (const int value : {32, 127, 128, 255}) {
        log = log + LogRecord(value, 1, 9, 9) + LogRecord(5, value, 9, 9);
    }
    WriteLog(2006, 2, log + LogRecord(0, 31, 4, 4) + LogRecord(31, 0, 5, 5) + LogRecord(5, 31, 6, 6));
    const TrafficSeries days = Read(UsageMode::Daily);
    EXPECT_EQ(std::tuple(days.received[0], days.received[31], days.received[5]), std::tuple(4.0, 5.0, 42.0));
    EXPECT_EQ(Sum(days.received), 4 + 5 + 42);
    const TrafficSeries hours = Read(UsageMode::Hourly);
    EXPECT_EQ(std::pair(hours.transmitted[31], Sum(hours.transmitted)), std::pair(6.0, 6.0));
}

TEST(LogReader, A_cut_tail_counts_with_the_bytes_that_are_there) {
    const Bytes whole = LogRecord(5, 1, 0x00010203, 0x04050607);
    const std::tuple<int, double, double> rows[] = {{1, 0, 0}, {5, 3, 0}, {8, 0x010203, 0}, {10, 0x010203, 0x0607}};
    for (const auto& [bytes, received, transmitted] : rows) {
        WriteLog(2006, 2, LogRecord(6, 1, 1, 1) + Bytes(whole.begin(), whole.begin() + bytes));
        const TrafficSeries days = Read(UsageMode::Daily);
        EXPECT_EQ(std::tuple(days.received[5], days.transmitted[5], days.received[6]),
                  std::tuple(received, transmitted, 1.0));
    }
}

TEST(LogReader, A_file_longer_than_a_month_is_read_to_its_end) {
    const Bytes month = FullMonth(2006, 2, 1, 2);
    WriteLog(2006, 2, month + month + LogRecord(7, 3, 8, 9));
    const TrafficSeries days = Read(UsageMode::Daily);
    EXPECT_EQ(std::pair(days.received[5], days.transmitted[7]), std::pair(48.0, 96.0 + 9));
}

}  // namespace
