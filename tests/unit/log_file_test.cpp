// The month's file byte for byte.
#include "trafficlog/log_file.h"

#include <gtest/gtest.h>

#include "tests/support/traffic_logs.h"

namespace {

const SYSTEMTIME kNow = {2006, 12, 0, 5, 15, 0, 0, 0};

// As the log writes it.
Bytes Record(int day, int hour, uint32_t received, uint32_t transmitted) {
    Bytes record = LogRecord(day, hour, received, transmitted);
    record[2] = record[3] = 0;
    return record;
}

TEST(LogTraffic, One_record_per_hour_holds_the_sums) {
    LogTraffic(nullptr, 0, 0);
    EXPECT_FALSE(FileExists(L"200612.log")) << "nothing happened";
    LogTrafficAt(kNow, 100, 7);
    EXPECT_EQ(ReadWholeFile(L"200612.log"), Record(5, 15, 100, 7));
    LogTrafficAt({2006, 12, 0, 5, 16, 0, 0, 0}, 0xFFFFFFFF, 0x01020304);
    LogTrafficAt(kNow, 12, 1);  // the clock was set back
    LogTrafficAt({2006, 12, 0, 5, 16, 0, 0, 0}, 5, 0);
    EXPECT_EQ(ReadWholeFile(L"200612.log"), Record(5, 15, 112, 8) + Record(5, 16, 4, 0x01020304));
    LogTrafficAt({2007, 1, 0, 1, 0, 0, 0, 0}, 3, 0);
    EXPECT_EQ(ReadWholeFile(L"200701.log"), Record(1, 0, 3, 0));
}

TEST(LogTraffic, A_full_month_is_searched_to_its_last_record) {
    Bytes month = FullMonth(2006, 12, 30, 20);
    WriteWholeFile(L"200612.log", month);
    LogTrafficAt({2006, 12, 0, 31, 23, 0, 0, 0}, 1, 2);
    LogTrafficAt({2006, 12, 0, 9, 0, 0, 0, 0}, 3, 4);  // the first record of the second read
    month[743 * 12 + 4] = 31;
    month[743 * 12 + 8] = 22;
    month[192 * 12 + 4] = 33;
    month[192 * 12 + 8] = 24;
    EXPECT_EQ(ReadWholeFile(L"200612.log"), month);
}

TEST(LogTraffic, What_follows_a_cut_tail_is_appended_behind_it) {
    for (const Bytes& tail : {Bytes{5}, Bytes{5, 15}, Bytes{5, 15, 0, 0, 1, 0, 0, 0, 1, 0, 0}}) {
        const Bytes damaged = Record(4, 1, 9, 9) + tail;
        WriteWholeFile(L"200612.log", damaged);
        LogTrafficAt(kNow, 1, 2);
        EXPECT_EQ(ReadWholeFile(L"200612.log"), damaged + Record(5, 15, 1, 2)) << tail.size();
    }
}

}  // namespace
