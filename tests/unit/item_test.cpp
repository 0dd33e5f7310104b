// The item's decisions: the tick, its rings and settings, the strip's marks and icons, taps, places of dialogs.
#include <gtest/gtest.h>

#include "item/dialog_placement.h"
#include "item/item_state.h"
#include "item/settings.h"
#include "item/strip.h"
#include "item/tap_dispatch.h"
#include "item/taskbar_icon.h"
#include "item/tick.h"
#include "options/general_settings.h"
#include "options/log_months.h"
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
    itemState.ringIndex = kSampleSlots - 2;
    itemState.ringStart = kSampleSlots - 1;
    EXPECT_EQ(tickTo(5203), std::tuple(20, 19, 0));
    scripted::system.adapters.clear();
    RunTick(nullptr);
    EXPECT_EQ(itemState.interfaceIndex, kUnknownInterface);
}

TEST(Settings, XLocation_is_clamped_and_the_clamped_value_written_back) {
    for (const auto& [stored, used] : {std::pair(0U, 0U), {639U, 639U}, {640U, 639U}, {0xFFFFFFFFU, 639U}}) {
        WriteNumberSetting(L"XLocation", stored);
        LoadDisplaySettings();
        uint32_t written = 0;
        EXPECT_TRUE(ReadNumberSetting(L"XLocation", &written));
        EXPECT_EQ(std::pair(itemState.xLocation, written), std::pair(used, used));
    }
}

TEST(Options, A_typed_place_is_limited_and_compared_as_typed_and_a_log_begins_with_six_digits) {
    itemState.xLocation = 639;
    const auto place = [](const wchar_t* typed) {
        const XLocationChoice choice = ReadXLocation(typed);
        return std::to_wstring(choice.place) + (choice.differs ? L" differs" : L"");
    };
    EXPECT_EQ(Each(place, {L"639", L"700", L"-1", L""}), L"639|639 differs|0 differs|0 differs");
    LogMonth month = {};
    for (const wchar_t* name : {L"2006.log", L"20061.log", L"2006-1.log", L""}) {
        EXPECT_FALSE(ParseLogName(name, month)) << name;
    }
    EXPECT_TRUE(ParseLogName(L"200611-copy.log", month));
    EXPECT_EQ(month.year + std::wstring(month.month), L"200611");
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
    itemState.outDeltas[7] = 800000;  // the oldest
    itemState.inDeltas[6] = 1;
    std::array<GraphMark, kMostGraphMarks> marks;
    ASSERT_EQ(ArrangeMiniGraph(marks), 2U);
    const auto line = [](const GraphMark& m) { return std::tuple(m.direction, m.from.x, m.from.y, m.to.x, m.to.y); };
    EXPECT_EQ(line(marks[0]), std::tuple(Direction::Transmitted, 47, 4, 49, 31));
    EXPECT_EQ(line(marks[1]), std::tuple(Direction::Received, 83, 31, 85, 30));
}

TEST(Strip, The_signal_is_drawn_on_change_on_full_paint_and_always_in_the_lowest_band) {
    const std::tuple<int32_t, bool, int> steps[] = {{-60, false, 163},  {-60, false, 0},   {-60, true, 163},
                                                    {-200, false, 159}, {-90, false, 159}, {-90, false, 159}};
    for (const auto& [dbm, fullPaint, icon] : steps) {
        itemState.SignalDbm = dbm;
        EXPECT_EQ(NextSignalIcon(fullPaint), icon) << dbm;
    }
}

TEST(TaskbarIcon, Follows_traffic_and_signal_on_both_screens) {
    itemState.ringIndex = 0;
    const auto icons = [](LONG screenHeight, uint32_t received, uint32_t transmitted) {
        UseScreen(240, screenHeight);
        itemState.inDeltas[0] = received;
        itemState.outDeltas[0] = transmitted;
        const auto iconAt = [](int32_t dbm) { return itemState.SignalDbm = dbm, TaskbarIconId(); };
        return Each(iconAt, {-90, -89, -80, -70, -66});
    };
    EXPECT_EQ(icons(320, 0, 0), L"238|239|240|241|242");
    EXPECT_EQ(icons(320, 1, 0), L"243|244|245|246|247");
    EXPECT_EQ(icons(320, 0, 1), L"248|249|250|251|252");
    EXPECT_EQ(icons(320, 1, 9), L"233|234|235|236|237");
    EXPECT_EQ(icons(321, 0, 0), L"218|219|220|221|222");
    EXPECT_EQ(icons(321, 1, 0), L"223|224|225|226|227");
    EXPECT_EQ(icons(321, 0, 1), L"228|229|230|231|232");
    EXPECT_EQ(icons(321, 1, 9), L"212|213|214|216|217");
}

TEST(Taps, Ranges_include_both_bounds_and_double_on_a_large_screen) {
    const int tools[] = {IDD_SIGNAL,           IDD_USAGE,    IDD_DHCP, IDD_PING, IDD_ADAPTER_DETAILS, IDD_SCANNER,
                         IDD_WIRELESS_DETAILS, IDD_DETECTOR, kNoTool,  kNoTool};
    const auto toolAt = [](uint32_t x, uint32_t y) {
        const Tool* tool = FindToolAt(x, y);
        return tool == nullptr ? -1 : tool->templateId;
    };
    for (const uint32_t scale : {1U, 2U}) {
        UseScreen(240 * scale, 320 * scale);
        for (uint32_t i = 0; i < std::size(tools); ++i) {
            const uint32_t left = (50 + 19 * i) * scale, right = left + 16 * scale, bottom = 16 * scale + 4;
            EXPECT_EQ(std::pair(toolAt(left, 4), toolAt(right, bottom)), std::pair(tools[i], tools[i]));
            EXPECT_EQ(std::pair(toolAt(left - 1, 4), toolAt(right + 1, 4)), std::pair(-1, -1));
            EXPECT_EQ(std::pair(toolAt(left, 3), toolAt(left, bottom + 1)), std::pair(-1, -1));
        }
        const uint32_t top = scale == 1 ? 1 : 3, right = scale == 1 ? 47 : 91, bottom = scale == 1 ? 23 : 36;
        EXPECT_TRUE(IsOnMiniGraph(3, top) && IsOnMiniGraph(right, bottom));
        EXPECT_FALSE(IsOnMiniGraph(2, top) || IsOnMiniGraph(3, top - 1));
        EXPECT_FALSE(IsOnMiniGraph(right + 1, top) || IsOnMiniGraph(3, bottom + 1));
    }
}

TEST(DialogPlacement, Each_rule_on_both_orientations) {
    const std::tuple<Placement, SIZE, SIZE, int, int> rows[] = {
        {Placement::Centred, {240, 320}, {209, 241}, 15, 39},
        {Placement::BelowTaskbar, {240, 320}, {209, 281}, 15, 27},
        {Placement::BelowTaskbar, {240, 320}, {209, 241}, 15, 39},
        {Placement::LandscapeBelowTaskbar, {240, 320}, {209, 300}, 15, 9},
        {Placement::LandscapeBelowTaskbar, {320, 240}, {263, 210}, 28, 27},
        {Placement::LandscapeBelowTaskbar, {480, 480}, {419, 469}, 30, 27},
        {Placement::Lifted, {240, 320}, {209, 241}, 15, 13},
        {Placement::Centred, {240, 320}, {260, 400}, -10, -40}};
    for (const auto& [placement, screen, size, x, y] : rows) {
        UseScreen(screen.cx, screen.cy);
        const DialogPlace place = ArrangeDialog(placement, size.cx, size.cy, 27);
        EXPECT_EQ(std::tuple(place.x, place.y, place.width, place.height), std::tuple(x, y, size.cx + 1, size.cy + 1));
    }
}

}  // namespace
