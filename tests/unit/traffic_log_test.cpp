// The month's file byte for byte, the series that are read from it, and the CSV file text by text.
#include <gtest/gtest.h>

#include "tests/support/texts.h"
#include "tests/support/traffic_logs.h"
#include "trafficlog/byte_count.h"
#include "trafficlog/export_writer.h"
#include "trafficlog/log_file.h"
#include "trafficlog/log_reader.h"

namespace {

TEST(Calendar, Months_have_their_days_and_names) {
    EXPECT_EQ(Each([](int year) { return DaysInMonth(year, 2); }, {2000, 1900, 2004, 2006}), L"29|28|29|28");
    const auto month = [](int number) { return MonthAbbrev(number) + std::to_wstring(DaysInMonth(2006, number)); };
    EXPECT_EQ(Each(month, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}),
              L"Jan31|Feb28|Mar31|Apr30|May31|Jun30|Jul31|Aug31|Sep30|Oct31|Nov30|Dec31");
}

// As the log writes it.
Bytes Record(int day, int hour, uint32_t received, uint32_t transmitted) {
    Bytes record = LogRecord(day, hour, received, transmitted);
    record[2] = record[3] = 0;
    return record;
}

void LogAt(WORD day, WORD hour, uint32_t received, uint32_t transmitted) {
    LogTrafficAt({2006, 12, 0, day, hour, 0, 0, 0}, received, transmitted);
}

TEST(LogTraffic, One_record_per_hour_holds_the_sums) {
    LogTraffic(nullptr, 0, 0);
    EXPECT_FALSE(FileExists(L"200612.log")) << "nothing happened";
    LogAt(5, 15, 100, 7);
    LogAt(5, 16, 0xFFFFFFFF, 0x01020304);
    LogAt(5, 15, 12, 1);  // the clock was set back
    LogAt(5, 16, 5, 0);
    EXPECT_EQ(ReadWholeFile(L"200612.log"), Record(5, 15, 112, 8) + Record(5, 16, 4, 0x01020304));
    Bytes month = FullMonth(2006, 12, 30, 20);
    WriteLog(2006, 12, month);
    LogAt(31, 23, 1, 2);
    month[743 * 12 + 4] = 31;
    month[743 * 12 + 8] = 22;
    EXPECT_EQ(ReadWholeFile(L"200612.log"), month);
}

// "slots: slot transmitted/received, ... most maximum" of February 5th, 2006.
std::string Read(UsageMode mode) {
    TrafficSeries series;
    series.transmitted.fill(99);
    series.maximum = 99;
    std::string text = std::to_string(ReadTrafficLog(mode, {2006, 2, 5}, series)) + ": ";
    const auto number = [](double value) { return std::to_string(static_cast<int64_t>(value)); };
    for (size_t slot = 0; slot < kSeriesSlots; ++slot) {
        const double sent = series.transmitted[slot], received = series.received[slot];
        text += sent + received == 0 ? "" : number(slot) + " " + number(sent) + "/" + number(received) + ", ";
    }
    return text + "most " + number(series.maximum);
}

TEST(LogReader, Hours_stand_alone_days_are_summed_and_odd_records_follow_the_rules) {
    const Bytes whole = LogRecord(5, 1, 0x00010203, 0x04050607);
    const auto cut = [&](ptrdiff_t bytes) { return Bytes(whole.begin(), whole.begin() + bytes); };
    const Bytes outside =
        LogRecord(32, 1, 9, 9) + LogRecord(5, 127, 9, 9) + LogRecord(128, 1, 9, 9) + LogRecord(5, 255, 9, 9);
    const std::tuple<Bytes, const char*, const char*> rows[] = {
        {LogRecord(5, 1, 500, 700) + LogRecord(5, 1, 20, 30) + LogRecord(6, 1, 10, 0xFFFFFFFF),
         "24: 1 30/20, most 700",  // the later of two counts, but the maximum stays
         "28: 5 730/520, 6 4294967295/10, most 4294967295"},
        {outside + LogRecord(0, 31, 4, 4) + LogRecord(31, 0, 5, 5) + LogRecord(5, 31, 6, 6), "24: 31 6/6, most 6",
         "28: 0 4/4, 5 24/24, 31 5/5, most 24"},
        {LogRecord(6, 1, 1, 1) + cut(5), "24: 1 0/3, most 3", "28: 5 0/3, 6 1/1, most 3"},
        {cut(10), "24: 1 1543/66051, most 66051", "28: 5 1543/66051, most 66051"},
    };
    for (const auto& [log, hours, days] : rows) {
        WriteLog(2006, 2, log);
        EXPECT_EQ(Read(UsageMode::Hourly), hours);
        EXPECT_EQ(Read(UsageMode::Daily), days);
    }
    // Longer than a month, and read to its end.
    const Bytes month = FullMonth(2006, 2, 2000, 1000);
    WriteLog(2006, 2, month + month + LogRecord(1, 3, 8, 9));
    EXPECT_TRUE(Read(UsageMode::Daily).starts_with("28: 1 48009/96008, 2 48000/96000, "));
}

TEST(ByteCount, Each_unit_is_1024_of_the_one_before) {
    wchar_t out[kByteCountUnits];
    const auto text = [&](double bytes) {
        FormatByteCount(bytes, out);
        return out;
    };
    EXPECT_EQ(Each(text, {0.0, 1.0, 1536.0, 1048575.0, 1048576.0, 1073741823.0, 1073741824.0, 2.0 * 744 * 0xFFFFFFFF}),
              L"0|0.00KB|1.50KB|1024.00KB|1.00MB|1024.00MB|1.00GB|5952.00GB");
}

// What follows the heading, with quotation marks as apostrophes.
std::string Export(const CalendarDate& from, const CalendarDate& to) {
    EXPECT_TRUE(ExportTraffic(DataPath(L"out.csv").c_str(), {from, to}));
    const Bytes csv = ReadWholeFile(L"out.csv");
    std::string text(csv.begin(), csv.end());
    std::ranges::replace(text, '"', '\'');
    EXPECT_TRUE(text.starts_with("'Date','Xmit','Rcv','Total'\n"));
    return text.substr(text.find('\n') + 1);
}

TEST(Export, Days_come_in_order_and_a_missing_or_empty_month_is_a_row_of_zeros) {
    WriteWholeFile(L"out.csv", Bytes(100000, 'x'));  // is replaced
    WriteLog(2006, 12, LogRecord(20, 1, 1024, 1536) + LogRecord(3, 1, 1024, 0) + LogRecord(20, 2, 1024, 1024));
    EXPECT_EQ(Export({2006, 12, 4}, {2006, 12, 31}),
              "'Dec 03, 2006','0','1.00KB','1.00KB'\n'Dec 20, 2006','2.50KB','2.00KB','4.50KB'\n"
              "'Total for Dec 2006','2.50KB','3.00KB','5.50KB'\n");
    // Only the first record read is held against the first day; an empty month hands the mark on.
    WriteLog(2007, 2, {});
    WriteLog(2007, 3, LogRecord(9, 0, 1024, 0) + LogRecord(8, 0, 1024, 0) + LogRecord(11, 0, 1024, 0));
    EXPECT_EQ(Export({2007, 1, 10}, {2007, 3, 10}),
              "'Total for Jan 2007','0','0','0'\n'Total for Feb 2007','0','0','0'\n"
              "'Mar 08, 2007','0','1.00KB','1.00KB'\n'Total for Mar 2007','0','1.00KB','1.00KB'\n");
    // Day 31 of April has its row; day 0 counts in the total alone; a day outside the series counts nowhere, but is
    // the first record read.
    WriteLog(2006, 4, LogRecord(200, 0, 1024, 0) + LogRecord(0, 0, 1024, 0) + LogRecord(31, 0, 1024, 0));
    EXPECT_EQ(Export({2006, 4, 10}, {2006, 4, 31}),
              "'Apr 31, 2006','0','1.00KB','1.00KB'\n'Total for Apr 2006','0','2.00KB','2.00KB'\n");
}

TEST(Export, Full_months_have_all_their_days_and_a_range_does_not_end_before_it_begins) {
    WriteLog(2006, 11, FullMonth(2006, 11, 1, 1));
    WriteLog(2006, 12, FullMonth(2006, 12, 0xFFFFFFFF, 0xFFFFFFFF));
    const std::string text = Export({2006, 11, 30}, {2006, 12, 31});
    EXPECT_EQ(std::ranges::count(text, '\n'), 61 + 2);
    EXPECT_TRUE(text.ends_with("'Total for Dec 2006','2976.00GB','2976.00GB','5952.00GB'\n"));
    const CalendarDate day = {2006, 3, 7};
    EXPECT_TRUE(IsValidRange({day, day}) && IsValidRange({{2005, 12, 31}, day}) && IsValidRange({{2006, 2, 28}, day}));
    EXPECT_FALSE(IsValidRange({day, {2006, 3, 6}}) || IsValidRange({day, {2006, 2, 28}}));
}

}  // namespace
