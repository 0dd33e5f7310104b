// Every system call of a tick's file work fails in turn; the bytes of other ticks always survive.

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "tests/fakes/fakes.h"
#include "tests/support/data_folder.h"
#include "trafficlog/log_file.h"

namespace {

uint32_t LoggedReceived() {
    uint32_t sum = 0;
    const Bytes log = ReadWholeFile(L"200612.log");
    for (size_t offset = 0; offset + 12 <= log.size(); offset += 12) {
        uint32_t received = 0;
        memcpy(&received, &log[offset + 4], sizeof(received));
        sum += received;
    }
    return sum;
}

TEST(LogTrafficFaults, A_failing_call_loses_at_most_its_own_tick) {
    for (const char* function :
         {"CreateFileW", "ReadFile", "WriteFile", "CreateDirectoryW", "SHGetSpecialFolderPathW"}) {
        fakes::ResetSystem();
        UseEmptyDataFolder();
        LogTraffic(nullptr, 1000, 0);
        fakes::FailCall(function, 1, 1000);
        LogTraffic(nullptr, 1, 0);
        fakes::FailCall(function, 0, 0);
        const uint32_t after = LoggedReceived();
        EXPECT_TRUE(after == 1000 || after == 1001) << function << ": " << after;
        LogTraffic(nullptr, 10, 0);
        EXPECT_EQ(LoggedReceived(), after + 10) << function;
    }
}

TEST(LogTrafficFaults, A_read_that_fails_once_is_tried_again) {
    LogTraffic(nullptr, 1000, 0);
    fakes::FailCall("ReadFile", 1, 3);
    LogTraffic(nullptr, 1, 0);
    EXPECT_EQ(LoggedReceived(), 1001U);
}

TEST(LogTrafficFaults, A_full_month_costs_a_handful_of_system_calls) {
    Bytes month;
    for (uint8_t record = 0; record < 31; ++record) {
        for (uint8_t hour = 0; hour < 24; ++hour) {
            const Bytes bytes = {static_cast<uint8_t>(record + 1), hour, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
            month.insert(month.end(), bytes.begin(), bytes.end());
        }
    }
    WriteWholeFile(L"200612.log", month);
    fakes::SetLocalTime({2006, 12, 0, 31, 23, 0, 0, 0});
    fakes::FailCall("ReadFile", 0, 0);
    fakes::FailCall("WriteFile", 0, 0);
    LogTraffic(nullptr, 1, 1);
    EXPECT_LE(fakes::CallCount("ReadFile"), 5);
    EXPECT_EQ(fakes::CallCount("WriteFile"), 1);
}

TEST(LogTrafficFaults, The_default_folders_are_made_whatever_the_data_folder_is) {
    LogTraffic(nullptr, 1, 0);
    EXPECT_TRUE(std::filesystem::is_directory(fakes::Root() / "Program Files/Ostrik/Quorvane"));
    EXPECT_FALSE(EnsureDataFolders(nullptr));  // they exist
}

}  // namespace
