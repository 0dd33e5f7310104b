// The month's file byte for byte.

#include "trafficlog/log_file.h"

#include <gtest/gtest.h>

#include "platform/format_text.h"
#include "tests/support/data_folder.h"

namespace {

Bytes Record(uint8_t day, uint8_t hour, uint32_t received, uint32_t transmitted) {
    Bytes bytes = {day, hour, 0, 0};
    for (const uint32_t value : {received, transmitted}) {
        for (int shift = 0; shift < 32; shift += 8) {
            bytes.push_back(static_cast<uint8_t>(value >> shift));
        }
    }
    return bytes;
}

Bytes operator+(Bytes a, const Bytes& b) {
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

const SYSTEMTIME kNow = {2006, 12, 0, 5, 15, 0, 0, 0};

TEST(LogTraffic, Nothing_happened_leaves_no_file_and_no_folder) {
    LogTraffic(nullptr, 0, 0);
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    wchar_t path[300];
    TrafficLogPath(now.wYear, now.wMonth, path);
    EXPECT_TRUE(ReadWholePath(path).empty());
}

TEST(LogTraffic, One_record_per_hour_holds_the_sums) {
    LogTrafficAt(kNow, 100, 7);
    EXPECT_EQ(ReadWholeFile(L"200612.log"), Record(5, 15, 100, 7));
    LogTrafficAt(kNow, 11, 0);
    EXPECT_EQ(ReadWholeFile(L"200612.log"), Record(5, 15, 111, 7));
    LogTrafficAt({2006, 12, 0, 5, 16, 0, 0, 0}, 1, 2);
    LogTrafficAt(kNow, 1, 1);  // the clock was set back
    EXPECT_EQ(ReadWholeFile(L"200612.log"), Record(5, 15, 112, 8) + Record(5, 16, 1, 2));
    LogTrafficAt({2007, 1, 0, 1, 0, 0, 0, 0}, 3, 4);
    EXPECT_EQ(ReadWholeFile(L"200701.log"), Record(1, 0, 3, 4));
}

TEST(LogTraffic, Sums_wrap_at_32_bits) {
    LogTrafficAt(kNow, 0xFFFFFFFF, 0xFFFFFF00);
    LogTrafficAt(kNow, 5, 0x100);
    EXPECT_EQ(ReadWholeFile(L"200612.log"), Record(5, 15, 4, 0));
}

TEST(LogTraffic, A_full_month_is_searched_to_its_last_record) {
    Bytes month;
    for (uint8_t day = 1; day <= 31; ++day) {
        for (uint8_t hour = 0; hour < 24; ++hour) {
            month = month + Record(day, hour, day, hour);
        }
    }
    WriteWholeFile(L"200612.log", month);
    LogTrafficAt({2006, 12, 0, 31, 23, 0, 0, 0}, 1, 1);
    LogTrafficAt({2006, 12, 0, 9, 0, 0, 0, 0}, 1, 1);  // the first record of the second read
    Bytes expected = month;
    expected[743 * 12 + 4] = 32;
    expected[743 * 12 + 8] = 24;
    expected[192 * 12 + 4] += 1;
    expected[192 * 12 + 8] += 1;
    EXPECT_EQ(ReadWholeFile(L"200612.log"), expected);
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
