// The CSV file text by text.

#include "trafficlog/export_writer.h"

#include <gtest/gtest.h>

#include "tests/support/traffic_logs.h"

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

TEST(Export, A_range_must_not_end_before_it_begins) {
    const CalendarDate day = {2006, 3, 7};
    EXPECT_TRUE(IsValidRange({day, day}));
    for (const CalendarDate& earlier : {CalendarDate{2005, 12, 31}, {2006, 2, 28}, {2006, 3, 6}}) {
        EXPECT_FALSE(IsValidRange({day, earlier}));
        EXPECT_TRUE(IsValidRange({earlier, day}));
    }
}

TEST(Export, One_day_gives_a_day_row_and_a_month_row) {
    WriteLog(2006, 3, LogRecord(7, 4, 0, 1536) + LogRecord(8, 4, 9, 9));
    EXPECT_EQ(Export({2006, 3, 7}, {2006, 3, 7}),
              Row("Mar 07, 2006", "1.50KB", "0", "1.50KB") + Row("Total for Mar 2006", "1.50KB", "0", "1.50KB"));
}

TEST(Export, Hours_of_a_day_are_summed_and_days_come_in_order) {
    WriteLog(2006, 3, LogRecord(9, 1, 1024, 1024) + LogRecord(3, 1, 1024, 0) + LogRecord(9, 2, 1024, 1024));
    EXPECT_EQ(Export({2006, 3, 1}, {2006, 3, 31}), Row("Mar 03, 2006", "0", "1.00KB", "1.00KB") +
                                                       Row("Mar 09, 2006", "2.00KB", "2.00KB", "4.00KB") +
                                                       Row("Total for Mar 2006", "2.00KB", "3.00KB", "5.00KB"));
}

TEST(Export, The_year_turns_and_a_missing_or_empty_month_is_a_row_of_zeros) {
    WriteLog(2006, 12, LogRecord(20, 0, 1024, 1024));
    WriteLog(2007, 2, {});
    WriteLog(2007, 3, LogRecord(10, 0, 1024, 0) + LogRecord(11, 0, 1024, 0));
    EXPECT_EQ(Export({2006, 12, 15}, {2007, 3, 10}),
              Row("Dec 20, 2006", "1.00KB", "1.00KB", "2.00KB") +
                  Row("Total for Dec 2006", "1.00KB", "1.00KB", "2.00KB") + Row("Total for Jan 2007", "0", "0", "0") +
                  Row("Total for Feb 2007", "0", "0", "0") + Row("Mar 10, 2007", "0", "1.00KB", "1.00KB") +
                  Row("Total for Mar 2007", "0", "1.00KB", "1.00KB"));
}

TEST(Export, Only_the_first_record_is_held_against_the_first_day) {
    WriteLog(2006, 3, LogRecord(2, 0, 1024, 0) + LogRecord(3, 0, 1024, 0) + LogRecord(12, 0, 1024, 0));
    EXPECT_EQ(Export({2006, 3, 10}, {2006, 3, 11}),
              Row("Mar 03, 2006", "0", "1.00KB", "1.00KB") + Row("Total for Mar 2006", "0", "1.00KB", "1.00KB"));
    // An empty first month hands the mark on.
    WriteLog(2006, 3, {});
    WriteLog(2006, 4, LogRecord(9, 0, 1024, 0) + LogRecord(9, 1, 1024, 0));
    EXPECT_EQ(Export({2006, 3, 10}, {2006, 4, 30}), Row("Total for Mar 2006", "0", "0", "0") +
                                                        Row("Apr 09, 2006", "0", "1.00KB", "1.00KB") +
                                                        Row("Total for Apr 2006", "0", "1.00KB", "1.00KB"));
}

TEST(Export, Odd_days_follow_the_rules_of_a_record) {
    // Day 31 of April has its row; day 0 counts in the total alone; a day outside the series counts nowhere, but is
    // the first record read.
    WriteLog(2006, 4, LogRecord(200, 0, 1024, 0) + LogRecord(0, 0, 1024, 0) + LogRecord(31, 0, 1024, 0));
    EXPECT_EQ(Export({2006, 4, 10}, {2006, 4, 31}),
              Row("Apr 31, 2006", "0", "1.00KB", "1.00KB") + Row("Total for Apr 2006", "0", "2.00KB", "2.00KB"));
}

TEST(Export, An_existing_file_is_replaced_and_a_file_that_cannot_be_made_is_told) {
    WriteWholeFile(L"out.csv", Bytes(5000, 'x'));
    EXPECT_EQ(Export({2006, 3, 1}, {2006, 3, 1}), Row("Total for Mar 2006", "0", "0", "0"));
    EXPECT_FALSE(ExportTraffic(DataPath(L"no-such-folder\\out.csv").c_str(), {{2006, 3, 1}, {2006, 3, 1}}));
    EXPECT_FALSE(ExportTraffic(L"", {{2006, 3, 1}, {2006, 3, 1}}));
}

TEST(Export, Ten_years_of_full_months_are_all_there) {
    for (int index = 1997 * 12; index < 2007 * 12; ++index) {
        WriteLog(index / 12, index % 12 + 1, FullMonth(index / 12, index % 12 + 1, 0xFFFFFFFF, 0xFFFFFFFF));
    }
    const std::string text = Export({1997, 1, 1}, {2006, 12, 31});
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 3652 + 120);
    const std::string end = Row("Dec 31, 2006", "96.00GB", "96.00GB", "192.00GB") +
                            Row("Total for Dec 2006", "2976.00GB", "2976.00GB", "5952.00GB");
    EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

}  // namespace
