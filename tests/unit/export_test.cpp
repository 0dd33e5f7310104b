// The CSV file text by text, and byte counts on both sides of every unit's bounds.
#include "trafficlog/export_writer.h"

#include <gtest/gtest.h>

#include "tests/support/traffic_logs.h"
#include "trafficlog/byte_count.h"

namespace {

const std::string kHeader = "\"Date\",\"Xmit\",\"Rcv\",\"Total\"\n";

std::string Export(const CalendarDate& from, const CalendarDate& to) {
    EXPECT_TRUE(ExportTraffic(DataPath(L"out.csv").c_str(), {from, to}));
    const Bytes csv = ReadWholeFile(L"out.csv");
    const std::string text(csv.begin(), csv.end());
    EXPECT_EQ(text.substr(0, kHeader.size()), kHeader);
    return text.substr(kHeader.size());
}

std::string Row(const char* date, const char* transmitted, const char* received, const char* total) {
    return std::string("\"") + date + "\",\"" + transmitted + "\",\"" + received + "\",\"" + total + "\"\n";
}

// A record of one received kilobyte.
Bytes Kilobyte(int day, int hour = 0) {
    return LogRecord(day, hour, 1024, 0);
}

std::string KilobyteRow(const char* date) {
    return Row(date, "0", "1.00KB", "1.00KB");
}

TEST(ByteCount, Each_unit_is_1024_of_the_one_before) {
    const std::pair<double, const wchar_t*> rows[] = {
        {0, L"0"},
        {1, L"0.00KB"},
        {1023, L"1.00KB"},
        {1536, L"1.50KB"},
        {1048575, L"1024.00KB"},
        {1048576, L"1.00MB"},
        {1073741823, L"1024.00MB"},
        {1073741824, L"1.00GB"},
        {2.0 * 744 * 4294967295.0, L"5952.00GB"},
    };
    for (const auto& [bytes, expected] : rows) {
        wchar_t text[kByteCountUnits];
        FormatByteCount(bytes, text);
        EXPECT_STREQ(text, expected);
    }
}

TEST(Export, A_range_must_not_end_before_it_begins) {
    const CalendarDate day = {2006, 3, 7};
    EXPECT_TRUE(IsValidRange({day, day}));
    for (const CalendarDate& earlier : {CalendarDate{2005, 12, 31}, {2006, 2, 28}, {2006, 3, 6}}) {
        EXPECT_FALSE(IsValidRange({day, earlier}));
        EXPECT_TRUE(IsValidRange({earlier, day}));
    }
}

TEST(Export, Days_come_in_order_and_a_missing_or_empty_month_is_a_row_of_zeros) {
    WriteLog(2006, 12, LogRecord(20, 1, 1024, 1536) + Kilobyte(3) + LogRecord(20, 2, 1024, 1024));
    WriteLog(2007, 2, {});
    WriteLog(2007, 3, Kilobyte(10) + Kilobyte(11));
    EXPECT_EQ(Export({2006, 12, 1}, {2007, 3, 10}),
              KilobyteRow("Dec 03, 2006") + Row("Dec 20, 2006", "2.50KB", "2.00KB", "4.50KB") +
                  Row("Total for Dec 2006", "2.50KB", "3.00KB", "5.50KB") + Row("Total for Jan 2007", "0", "0", "0") +
                  Row("Total for Feb 2007", "0", "0", "0") + KilobyteRow("Mar 10, 2007") +
                  KilobyteRow("Total for Mar 2007"));
}

TEST(Export, Only_the_first_record_is_held_against_the_first_day) {
    WriteLog(2006, 3, Kilobyte(2) + Kilobyte(3) + Kilobyte(12));
    EXPECT_EQ(Export({2006, 3, 10}, {2006, 3, 11}), KilobyteRow("Mar 03, 2006") + KilobyteRow("Total for Mar 2006"));
    // An empty first month hands the mark on.
    WriteLog(2006, 3, {});
    WriteLog(2006, 4, Kilobyte(9) + Kilobyte(9, 1));
    EXPECT_EQ(
        Export({2006, 3, 10}, {2006, 4, 30}),
        Row("Total for Mar 2006", "0", "0", "0") + KilobyteRow("Apr 09, 2006") + KilobyteRow("Total for Apr 2006"));
}

TEST(Export, Odd_days_follow_the_rules_of_a_record) {
    // Day 31 of April has its row; day 0 counts in the total alone; a day outside the series counts nowhere, but is
    // the first record read.
    WriteLog(2006, 4, Kilobyte(200) + Kilobyte(0) + Kilobyte(31));
    EXPECT_EQ(Export({2006, 4, 10}, {2006, 4, 31}),
              KilobyteRow("Apr 31, 2006") + Row("Total for Apr 2006", "0", "2.00KB", "2.00KB"));
}

TEST(Export, Full_months_have_all_their_days_and_replace_what_the_file_held) {
    WriteWholeFile(L"out.csv", Bytes(100000, 'x'));
    WriteLog(2006, 11, FullMonth(2006, 11, 1, 1));
    WriteLog(2006, 12, FullMonth(2006, 12, 0xFFFFFFFF, 0xFFFFFFFF));
    const std::string text = Export({2006, 11, 1}, {2006, 12, 31});
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 61 + 2);
    EXPECT_TRUE(text.ends_with(Row("Dec 31, 2006", "96.00GB", "96.00GB", "192.00GB") +
                               Row("Total for Dec 2006", "2976.00GB", "2976.00GB", "5952.00GB")));
    EXPECT_FALSE(ExportTraffic(DataPath(L"no-such-folder\\out.csv").c_str(), {{2006, 3, 1}, {2006, 3, 1}}));
}

}  // namespace
