// The usage view arranged as chart and table.

#include "charts/usage_chart.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "charts/usage_table.h"
#include "resources/resource_ids.h"
#include "tests/support/texts.h"
#include "tests/support/usage_views.h"

namespace {

std::wstring Bars(UsageView& view) {
    const auto& [transmitted, received] = std::tie(view.series.transmitted, view.series.received);
    view.series.maximum = std::max(*std::max_element(transmitted.begin(), transmitted.end()),
                                   *std::max_element(received.begin(), received.end()));
    UsageChart chart;
    ArrangeUsageChart(view, chart);
    std::wstring bars;
    for (int i = 0; i < chart.barCount; ++i) {
        const ChartBar& bar = chart.bars[i];
        bars += (bar.traffic == Traffic::Transmitted ? L"T" : L"R") + std::to_wstring(bar.x) + L":" +
                std::to_wstring(bar.foot) + L"-" + std::to_wstring(bar.top) + L" ";
    }
    return bars;
}

UsageTable TableOf(const UsageView& view) {
    UsageTable table;
    ArrangeUsageTable(view, table);
    return table;
}

TEST(UsageChart, Bars_stand_at_their_slots) {
    UseScreen(kPortrait);
    UsageView hours = ViewOf(UsageMode::Hourly);
    hours.series.transmitted[0] = 1000;
    hours.series.received[23] = 512;
    EXPECT_EQ(Bars(hours), L"T37:193-96 R198:193-143 ");
    UsageView days = ViewOf(UsageMode::Daily);
    days.series.transmitted[0] = 1000;  // no day
    days.series.transmitted[1] = 1000;
    days.series.received[31] = 512;
    EXPECT_EQ(Bars(days), L"T35:193-96 R185:193-143 ");
    days.slotCount = 30;
    EXPECT_EQ(Bars(days), L"T35:193-96 ");
    UseScreen(kHiResSquare);
    EXPECT_EQ(Bars(hours), L"T74:388-194 R396:388-288 ");
}

TEST(UsageChart, The_shorter_bar_stands_in_front_and_equal_ones_are_one_red_bar) {
    UseScreen(kPortrait);
    UsageView view = ViewOf(UsageMode::Daily);
    view.series.transmitted = {0, 100, 200, 150, 150, 150, 0, 7};
    view.series.received = {0, 200, 100, 150, 155, 0, 150, 7};
    EXPECT_EQ(Bars(view),
              L"R35:193-174 T35:193-184 T40:193-174 R40:193-184 T45:193-179 R50:193-178 T50:193-179 T55:193-179 "
              L"R60:193-179 ");
    // Both 14 %: equal on the screen, though the values differ.
    view.series.transmitted = {0, 145, 1000};
    view.series.received = {0, 146};
    EXPECT_EQ(Bars(view), L"T35:193-179 T40:193-96 ");
}

TEST(UsageChart, Percentages_are_cut_to_whole_ones_and_end_at_a_hundred) {
    UseScreen(kPortrait);
    const std::tuple<double, double, int> rows[] = {
        {1023, 1023, 99},  {1000, 1000, 97},       {1024, 1024, 10},   {10239, 102, 0},
        {10239, 103, 1},   {1048576, 1048576, 51}, {2e9, 1.9e9, 92},   {2048000000, 2048000000, 100},
        {5e12, 5e12, 100}, {5e12, 20479999, 0},    {5e12, 20480001, 1}};
    for (const auto& [maximum, value, height] : rows) {
        UsageView view = ViewOf(UsageMode::Daily);
        view.series.transmitted[1] = value;
        view.series.maximum = maximum;
        UsageChart chart;
        ArrangeUsageChart(view, chart);
        EXPECT_EQ(chart.barCount == 0 ? 0 : chart.bars[0].foot - chart.bars[0].top, height) << value;
    }
}

TEST(UsageTable, Nine_rows_make_two_pages) {
    UseScreen(kPortrait);
    UsageView view = ViewWithRows(9, UsageStyle::Table);
    EXPECT_EQ(TableOf(view).textCount, 8 * 4 + 1);
    EXPECT_STREQ(TableOf(view).texts[32].text, L"1/2");
    view.page = 1;
    const UsageTable table = TableOf(view);
    ASSERT_EQ(table.textCount, 5);
    EXPECT_EQ(Joined({table.texts[0].text, table.texts[1].text, table.texts[2].text, table.texts[3].text,
                      table.texts[4].text}),
              L"9|0|9.00KB|9.00KB|2/2");
    EXPECT_STREQ(TableOf(ViewWithRows(0, UsageStyle::Table)).texts[0].text, L"0/0");
    EXPECT_STREQ(TableOf(ViewWithRows(31, UsageStyle::Table)).texts[32].text, L"1/4");
}

TEST(UsageTable, Hours_are_labelled_in_the_chosen_format) {
    UseScreen(kPortrait);
    const std::tuple<int, const wchar_t*, const wchar_t*> rows[] = {{1, L"01 am", L"01:00"},
                                                                    {11, L"11 am", L"11:00"},
                                                                    {12, L"12 pm", L"12:00"},
                                                                    {13, L"01 pm", L"13:00"},
                                                                    {23, L"11 pm", L"23:00"}};
    for (const auto& [hour, amPm, military] : rows) {
        UsageView view = ViewOf(UsageMode::Hourly);
        view.series.transmitted[hour] = 1;
        itemState.amPmFormat = true;
        EXPECT_STREQ(TableOf(view).texts[0].text, amPm);
        itemState.amPmFormat = false;
        EXPECT_STREQ(TableOf(view).texts[0].text, military);
    }
}

}  // namespace
