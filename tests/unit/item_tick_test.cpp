// The sampling tick over scripted adapters: increments, rings, recovery of a vanished adapter.
#include "item/tick.h"

#include <gtest/gtest.h>

#include "item/adapter_choice.h"
#include "item/item_state.h"
#include "item/taskbar_icon.h"
#include "tests/fakes/scripted_platform.h"

namespace {

void TickWithCounters(uint32_t received, uint32_t transmitted) {
    scripted::system.adapters.resize(1);
    scripted::system.adapters[0].received = received;
    scripted::system.adapters[0].transmitted = transmitted;
    RunTick(nullptr);
}

TEST(Tick, Increments_are_small_steps_or_nothing) {
    const std::tuple<uint32_t, uint32_t, uint32_t> rows[] = {
        {0, 0, 0},          {1000, 900, 0},     {0xFFFFFFF0, 0x10, 0x20}, {0, 0x7FFFFFFF, 0x7FFFFFFF},
        {0, 0x80000000, 0}, {0x80000000, 0, 0}, {0xFFFFFFFF, 0, 1}};
    for (const auto& [last, now, increment] : rows) {
        EXPECT_EQ(IncrementSince(last, now), increment) << last << " to " << now;
    }
}

TEST(Tick, The_first_one_only_primes_the_counters_and_the_21st_increment_overwrites_the_oldest) {
    TickWithCounters(5000, 700);
    EXPECT_EQ(itemState.sampleCount, 0);
    TickWithCounters(5300, 800);
    EXPECT_EQ(std::tuple(itemState.sampleCount, itemState.inDeltas[0], itemState.outDeltas[0]),
              std::tuple(1, 300U, 100U));
    for (uint32_t tick = 1; tick <= 20; ++tick) {
        TickWithCounters(5300 + tick, 800);
    }
    EXPECT_EQ(std::tuple(itemState.sampleCount, itemState.ringIndex, itemState.ringStart),
              std::tuple(kSampleSlots, 0, 1));
    EXPECT_EQ(std::pair(itemState.inDeltas[0], itemState.outDeltas[0]), std::pair(1U, 0U));
    for (int i = 0; i < 19; ++i) {
        TickWithCounters(5320, 800);
    }
    EXPECT_EQ(std::pair(itemState.ringIndex, itemState.ringStart), std::pair(19, 0));
}

TEST(Tick, A_vanished_adapter_reads_as_zero_and_is_found_again_under_another_index) {
    TickWithCounters(1000, 0);
    TickWithCounters(1100, 0);
    const scripted::Adapter adapter = std::exchange(scripted::system.adapters, {})[0];
    RunTick(nullptr);
    EXPECT_EQ(itemState.interfaceIndex, kUnknownInterface);
    EXPECT_EQ(itemState.lastInOctets, 0U);
    scripted::system.adapters = {adapter};
    scripted::system.adapters[0].index = 9;
    TickWithCounters(1500, 0);
    EXPECT_EQ(itemState.interfaceIndex, 9U);
    EXPECT_EQ(itemState.inDeltas[itemState.ringIndex], 1500U);
}

TEST(ChooseAdapter, Takes_the_first_Ethernet_adapter_and_its_index_by_name) {
    scripted::system.adapters = {{.name = "ppp", .type = 23}, {.name = "first", .index = 4}, {.name = "second"}};
    EXPECT_TRUE(ChooseAdapter());
    EXPECT_STREQ(itemState.adapterName, L"first");
    EXPECT_EQ(itemState.interfaceIndex, 4U);
    scripted::system.adapters.resize(1);
    EXPECT_FALSE(ChooseAdapter());
    EXPECT_STREQ(itemState.adapterName, L"");
    EXPECT_EQ(itemState.interfaceIndex, 4U);
    scripted::system.adapters.clear();
    EXPECT_FALSE(ChooseAdapter());
    EXPECT_EQ(itemState.interfaceIndex, kUnknownInterface);
}

TEST(TaskbarIcon, Follows_traffic_and_signal_on_both_screens) {
    const std::tuple<uint32_t, uint32_t, int32_t, int, int> rows[] = {
        {1, 1, -200, 212, 233}, {1, 1, -89, 213, 234}, {1, 1, -80, 214, 235}, {1, 1, -70, 216, 236},
        {1, 1, -66, 217, 237},  {0, 1, -90, 228, 248}, {0, 1, -66, 232, 252}, {1, 0, -90, 223, 243},
        {1, 0, -67, 226, 246},  {0, 0, -71, 220, 240}, {0, 0, -66, 222, 242}};
    for (const auto& [in, out, dbm, hiRes, normal] : rows) {
        itemState.ringIndex = 0;
        itemState.inDeltas[0] = in;
        itemState.outDeltas[0] = out;
        itemState.SignalDbm = dbm;
        itemState.screenWidth = 240;
        itemState.screenHeight = 320;
        EXPECT_EQ(TaskbarIconId(), normal);
        itemState.screenHeight = 321;
        EXPECT_EQ(TaskbarIconId(), hiRes);
    }
}

}  // namespace
