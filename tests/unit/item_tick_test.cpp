// The sampling tick over scripted adapters: increments, rings, recovery of a vanished adapter, what reaches the log.

#include "item/tick.h"

#include <gtest/gtest.h>

#include "item/adapter_choice.h"
#include "item/item_state.h"
#include "item/taskbar_icon.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/data_folder.h"

namespace {

scripted::Adapter& OnlyAdapter() {
    if (scripted::system.adapters.empty()) {
        scripted::system.adapters.emplace_back();
    }
    return scripted::system.adapters.front();
}

void TickWithCounters(uint32_t received, uint32_t transmitted) {
    OnlyAdapter().received = received;
    OnlyAdapter().transmitted = transmitted;
    RunTick(nullptr);
}

// Whatever month it is on the real clock.
uint32_t LoggedReceived() {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    const Bytes log = ReadWholePath(DataPath(std::to_wstring(now.wYear * 100 + now.wMonth) + L".log"));
    return log.size() < 8 ? 0U : log[4] + 256U * log[5];
}

TEST(Tick, Increments_are_small_steps_or_nothing) {
    const std::tuple<uint32_t, uint32_t, uint32_t> rows[] = {
        {0, 0, 0},          {1000, 900, 0},     {0xFFFFFFF0, 0x10, 0x20}, {0, 0x7FFFFFFF, 0x7FFFFFFF},
        {0, 0x80000000, 0}, {0x80000000, 0, 0}, {0xFFFFFFFF, 0, 1}};
    for (const auto& [last, now, increment] : rows) {
        EXPECT_EQ(IncrementSince(last, now), increment) << last << " to " << now;
    }
}

TEST(Tick, The_first_one_only_primes_the_counters) {
    TickWithCounters(5000, 700);
    EXPECT_EQ(itemState.sampleCount, 0);
    EXPECT_EQ(LoggedReceived(), 0U);
    TickWithCounters(5300, 800);
    EXPECT_EQ(itemState.sampleCount, 1);
    EXPECT_EQ(itemState.inDeltas[0], 300U);
    EXPECT_EQ(itemState.outDeltas[0], 100U);
    EXPECT_EQ(LoggedReceived(), 300U);
}

TEST(Tick, The_21st_increment_overwrites_the_oldest) {
    for (uint32_t tick = 0; tick <= 21; ++tick) {
        TickWithCounters(tick * tick, 0);
    }
    EXPECT_EQ(itemState.sampleCount, kSampleSlots);
    EXPECT_EQ(itemState.ringIndex, 0);
    EXPECT_EQ(itemState.ringStart, 1);
    EXPECT_EQ(itemState.inDeltas[0], 41U);
    EXPECT_EQ(itemState.inDeltas[1], 3U);
    for (int i = 0; i < 19; ++i) {
        TickWithCounters(22 * 22, 0);
    }
    EXPECT_EQ(itemState.ringIndex, 19);
    EXPECT_EQ(itemState.ringStart, 0);
}

TEST(Tick, A_vanished_adapter_reads_as_zero_and_is_found_again_under_another_index) {
    TickWithCounters(1000, 0);
    TickWithCounters(1100, 0);
    const scripted::Adapter adapter = OnlyAdapter();
    scripted::system.adapters.clear();
    RunTick(nullptr);
    EXPECT_EQ(itemState.interfaceIndex, kUnknownInterface);
    EXPECT_EQ(itemState.lastInOctets, 0U);
    scripted::system.adapters.push_back(adapter);
    OnlyAdapter().index = 9;
    TickWithCounters(1500, 0);
    EXPECT_EQ(itemState.interfaceIndex, 9U);
    EXPECT_EQ(itemState.inDeltas[itemState.ringIndex], 1500U);
    TickWithCounters(1510, 0);
    EXPECT_EQ(LoggedReceived(), 100U + 1500U + 10U);
}

TEST(ChooseAdapter, Takes_the_first_Ethernet_adapter_and_its_index_by_name) {
    scripted::system.adapters = {{.name = "ppp", .index = 1, .type = 23},
                                 {.name = "first", .index = 4, .type = MIB_IF_TYPE_ETHERNET},
                                 {.name = "second", .index = 5, .type = MIB_IF_TYPE_ETHERNET}};
    EXPECT_TRUE(ChooseAdapter());
    EXPECT_STREQ(itemState.adapterName, L"first");
    EXPECT_EQ(itemState.interfaceIndex, 4U);
    scripted::system.adapters.resize(1);
    EXPECT_FALSE(ChooseAdapter());
    EXPECT_STREQ(itemState.adapterName, L"");
    EXPECT_EQ(itemState.interfaceIndex, 4U);
    scripted::system.interfaceCount = 0;
    EXPECT_FALSE(ChooseAdapter());
    EXPECT_EQ(itemState.interfaceIndex, kUnknownInterface);
}

TEST(TaskbarIcon, Follows_traffic_and_signal_on_both_screens) {
    struct Row {
        uint32_t in, out;
        int32_t dbm;
        int hiRes, normal;
    };
    const Row rows[] = {{1, 1, -200, 212, 233}, {1, 1, -89, 213, 234}, {1, 1, -80, 214, 235}, {1, 1, -70, 216, 236},
                        {1, 1, -66, 217, 237},  {0, 1, -90, 228, 248}, {0, 1, -66, 232, 252}, {1, 0, -90, 223, 243},
                        {1, 0, -67, 226, 246},  {0, 0, -71, 220, 240}, {0, 0, -66, 222, 242}};
    for (const Row& row : rows) {
        itemState.ringIndex = 0;
        itemState.inDeltas[0] = row.in;
        itemState.outDeltas[0] = row.out;
        itemState.SignalDbm = row.dbm;
        itemState.screenWidth = 240;
        itemState.screenHeight = 320;
        EXPECT_EQ(TaskbarIconId(), row.normal);
        itemState.screenHeight = 321;
        EXPECT_EQ(TaskbarIconId(), row.hiRes);
    }
}

}  // namespace
