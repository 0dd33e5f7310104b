// The item's decisions: the tick, its rings and settings, the strip's heights, taps.
#include <gtest/gtest.h>

#include "item/item_state.h"
#include "item/settings.h"
#include "item/strip.h"
#include "item/tap_dispatch.h"
#include "item/tick.h"
#include "resources/resource_ids.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/texts.h"

namespace {

void UseScreen(LONG width, LONG height) {
    scripted::system.screen = {width, height};
    RefreshScreenSize();
}

TEST(Tick, Increments_are_small_steps_or_nothing) {
    EXPECT_EQ(IncrementSince(0xFFFFFFF0, 0x10), 0x20U) << "the counter wrapped";
    EXPECT_EQ(IncrementSince(1000, 900), 0U) << "it fell";
    EXPECT_EQ(IncrementSince(0, 0x7FFFFFFF), 0x7FFFFFFFU);
    EXPECT_EQ(IncrementSince(0, 0x80000000), 0U);
}

TEST(Tick, The_first_one_only_primes_the_counters_and_the_21st_increment_overwrites_the_oldest) {
    const auto tickTo = [](uint32_t received) {
        scripted::system.adapters = {{.received = received, .transmitted = 700 + 2 * (received - 5000)}};
        RunTick(nullptr);
        return std::tuple(itemState.sampleCount, itemState.ringIndex, itemState.ringStart);
    };
    EXPECT_EQ(tickTo(5000), std::tuple(0, -1, -1));
    for (int sample = 1; sample <= kSampleSlots; ++sample) {
        EXPECT_EQ(tickTo(5000 + 10U * sample), std::tuple(sample, sample - 1, 0));
    }
    EXPECT_EQ(tickTo(5203), std::tuple(20, 0, 1));
    EXPECT_EQ(std::tuple(itemState.inDeltas[0], itemState.outDeltas[0], itemState.inDeltas[19]), std::tuple(3, 6, 10));
    scripted::system.adapters.clear();
    RunTick(nullptr);
    EXPECT_EQ(itemState.interfaceIndex, kUnknownInterface);
}

TEST(Settings, XLocation_is_clamped_and_what_is_no_number_is_absent_and_replaced) {
    const std::tuple<DWORD, uint32_t, DWORD, uint32_t> rows[] = {
        {REG_DWORD, 0, 4, 0},   {REG_DWORD, 639, 4, 639}, {REG_DWORD, 640, 4, 639}, {REG_DWORD, 0xFFFFFFFF, 4, 639},
        {REG_DWORD, 30, 3, 75}, {REG_SZ, 30, 4, 75},      {REG_DWORD, 30, 0, 75}};
    for (const auto& [type, value, bytes, used] : rows) {
        HKEY key = nullptr;
        RegCreateKeyExW(HKEY_LOCAL_MACHINE, kItemKey, 0, nullptr, 0, KEY_WRITE, nullptr, &key, nullptr);
        RegSetValueExW(key, L"XLocation", 0, type, reinterpret_cast<const BYTE*>(&value), bytes);
        RegCloseKey(key);
        LoadDisplaySettings();
        uint32_t written = 0;
        EXPECT_TRUE(ReadNumberSetting(L"XLocation", &written));
        EXPECT_EQ(std::pair(itemState.xLocation, written), std::pair(used, used)) << type << "," << bytes;
    }
}

TEST(Strip, Heights_climb_the_ladder) {
    const auto bytes = {0U,      1U,      999U,    1000U,   9999U,   10000U,     99999U,
                        100000U, 499999U, 500000U, 799999U, 800000U, 0xFFFFFFFFU};
    UseScreen(240, 320);
    EXPECT_EQ(Each(GraphHeight, bytes), L"0|1|1|2|6|7|11|13|16|17|17|18|18");
    UseScreen(480, 640);
    EXPECT_EQ(Each(GraphHeight, bytes), L"0|1|1|3|9|10|16|19|24|25|25|27|27");
}

TEST(Strip, A_full_ring_is_walked_from_its_oldest_sample) {
    UseScreen(480, 640);
    itemState.sampleCount = kSampleSlots;
    itemState.ringStart = 7;
    itemState.inDeltas[7] = 800000;
    std::array<GraphMark, kMostGraphMarks> marks;
    ASSERT_EQ(ArrangeMiniGraph(marks), 1U);
    EXPECT_EQ(std::tuple(marks[0].from.x, marks[0].from.y, marks[0].to.y), std::tuple(47, 4, 31));
}

TEST(Taps, Ranges_include_both_bounds) {
    const auto toolAt = [](uint32_t x, uint32_t y) {
        const Tool* tool = FindToolAt(x, y);
        return tool == nullptr ? -1 : tool->templateId;
    };
    UseScreen(480, 640);
    EXPECT_EQ(std::pair(toolAt(138, 4), toolAt(170, 36)), std::pair(IDD_USAGE, IDD_USAGE));
    EXPECT_EQ(std::pair(toolAt(137, 4), toolAt(171, 36)), std::pair(-1, -1));
    EXPECT_EQ(std::pair(toolAt(138, 3), toolAt(170, 37)), std::pair(-1, -1));
}

}  // namespace
