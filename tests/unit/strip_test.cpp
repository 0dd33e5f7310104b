// The strip's arrangement: graph heights, marks, icons, and what a tap hits.
#include "item/strip.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "item/dialog_placement.h"
#include "item/item_state.h"
#include "item/tap_dispatch.h"
#include "resources/resource_ids.h"
#include "tests/support/usage_views.h"

namespace {

TEST(GraphHeight, Steps_of_the_ladder) {
    const std::tuple<uint32_t, int, int> rows[] = {
        {0, 0, 0},        {1, 1, 1},        {999, 1, 1},         {1000, 2, 3},     {9999, 6, 9},
        {10000, 7, 10},   {99999, 11, 16},  {100000, 13, 19},    {499999, 16, 24}, {500000, 17, 25},
        {799999, 17, 25}, {800000, 18, 27}, {0xFFFFFFFF, 18, 27}};
    for (const auto& [bytes, normal, hiRes] : rows) {
        UseScreen(kPortrait);
        EXPECT_EQ(GraphHeight(bytes), normal) << bytes;
        UseScreen(kHiResPortrait);
        EXPECT_EQ(GraphHeight(bytes), hiRes) << bytes;
    }
}

std::vector<GraphMark> Marks() {
    std::array<GraphMark, kMostGraphMarks> marks;
    const size_t count = ArrangeMiniGraph(marks);
    return {marks.begin(), marks.begin() + static_cast<ptrdiff_t>(count)};
}

TEST(MiniGraph, One_sample_is_two_pixels_or_none) {
    itemState.sampleCount = 1;
    EXPECT_TRUE(Marks().empty());
    itemState.inDeltas[0] = 999;
    itemState.outDeltas[0] = 800000;
    const std::vector<GraphMark> marks = Marks();
    ASSERT_EQ(marks.size(), 2U);
    EXPECT_EQ(std::tuple(marks[0].direction, marks[0].to.x, marks[0].to.y, marks[1].to.y),
              std::tuple(Direction::Received, 41, 19, 2));
}

TEST(MiniGraph, A_full_ring_is_walked_from_its_oldest_entry) {
    UseScreen(kHiResPortrait);
    for (const int start : {0, 1, 19}) {
        itemState.sampleCount = kSampleSlots;
        itemState.ringStart = start;
        itemState.ringIndex = (start + 19) % kSampleSlots;
        for (int k = 0; k < kSampleSlots; ++k) {
            itemState.outDeltas[(start + k) % kSampleSlots] = k % 2 == 0 ? 1 : 800000;
        }
        const std::vector<GraphMark> marks = Marks();
        ASSERT_EQ(marks.size(), 19U);
        for (int k = 0; k < 19; ++k) {
            const GraphMark& mark = marks[static_cast<size_t>(k)];
            EXPECT_EQ(std::tuple(mark.to.x, mark.from.y, mark.to.y),
                      std::tuple(49 + 2 * k, k % 2 == 0 ? 30 : 4, k % 2 == 0 ? 4 : 30));
        }
    }
}

TEST(SignalIcon, Drawn_on_change_on_full_paint_and_always_in_the_lowest_band) {
    const std::tuple<int32_t, bool, int> steps[] = {{-60, false, 163},  {-60, false, 0},   {-60, true, 163},
                                                    {-200, false, 159}, {-90, false, 159}, {-90, false, 159}};
    for (const auto& [dbm, fullPaint, icon] : steps) {
        itemState.SignalDbm = dbm;
        EXPECT_EQ(NextSignalIcon(fullPaint), icon) << dbm;
    }
}

TEST(Taps, Ranges_include_both_bounds_and_double_on_a_large_screen) {
    const std::pair<uint32_t, int> rows[] = {{50, IDD_SIGNAL},
                                             {69, IDD_USAGE},
                                             {88, IDD_DHCP},
                                             {107, IDD_PING},
                                             {126, IDD_ADAPTER_DETAILS},
                                             {145, IDD_SCANNER},
                                             {164, IDD_WIRELESS_DETAILS},
                                             {183, IDD_DETECTOR},
                                             {202, kNoTool},
                                             {221, kNoTool}};
    const auto toolAt = [](uint32_t x, uint32_t y) {
        const Tool* tool = FindToolAt(x, y);
        return tool == nullptr ? -1 : tool->templateId;
    };
    for (const uint32_t scale : {1U, 2U}) {
        UseScreen(scale == 1 ? kPortrait : kHiResPortrait);
        for (const auto& [left, tool] : rows) {
            const uint32_t bottom = 16 * scale + 4;
            EXPECT_EQ(toolAt(left * scale, 4), tool);
            EXPECT_EQ(toolAt((left + 16) * scale, bottom), tool);
            EXPECT_EQ(toolAt(left * scale - 1, 4), -1);
            EXPECT_EQ(toolAt((left + 16) * scale + 1, 4), -1);
            EXPECT_EQ(toolAt(left * scale, 3), -1);
            EXPECT_EQ(toolAt(left * scale, bottom + 1), -1);
        }
    }
}

TEST(Taps, The_mini_graph_has_bounds_of_its_own) {
    UseScreen(kPortrait);
    EXPECT_TRUE(IsOnMiniGraph(3, 1) && IsOnMiniGraph(47, 23));
    EXPECT_FALSE(IsOnMiniGraph(2, 1) || IsOnMiniGraph(48, 1) || IsOnMiniGraph(3, 0) || IsOnMiniGraph(10, 24));
    UseScreen(kHiResPortrait);
    EXPECT_TRUE(IsOnMiniGraph(3, 3) && IsOnMiniGraph(91, 36));
    EXPECT_FALSE(IsOnMiniGraph(92, 3) || IsOnMiniGraph(3, 2) || IsOnMiniGraph(3, 37));
}

TEST(DialogPlacement, Each_rule_on_both_orientations) {
    const std::tuple<Placement, SIZE, SIZE, int, int> rows[] = {
        {Placement::Centred, kPortrait, {209, 241}, 15, 39},
        {Placement::BelowTaskbar, kPortrait, {209, 281}, 15, 27},
        {Placement::BelowTaskbar, kPortrait, {209, 241}, 15, 39},
        {Placement::LandscapeBelowTaskbar, kPortrait, {209, 300}, 15, 9},
        {Placement::LandscapeBelowTaskbar, kLandscape, {263, 210}, 28, 27},
        {Placement::LandscapeBelowTaskbar, kHiResSquare, {419, 469}, 30, 27},
        {Placement::Lifted, kPortrait, {209, 241}, 15, 13},
        {Placement::Centred, kPortrait, {260, 400}, -10, -40}};
    for (const auto& [placement, screen, size, x, y] : rows) {
        UseScreen(screen);
        const DialogPlace place = ArrangeDialog(placement, size.cx, size.cy, 27);
        EXPECT_EQ(std::tuple(place.x, place.y, place.width, place.height), std::tuple(x, y, size.cx + 1, size.cy + 1));
    }
}

}  // namespace
