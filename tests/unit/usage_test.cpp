// The usage view's state and its arrangement as chart and table.

#include <gtest/gtest.h>

#include "charts/usage_chart.h"
#include "charts/usage_table.h"
#include "item/item_state.h"
#include "resources/resource_ids.h"
#include "tests/support/traffic_logs.h"

namespace {

constexpr SIZE kPortrait = {240, 320};
constexpr SIZE kLandscape = {320, 240};
constexpr SIZE kHiResPortrait = {480, 640};
constexpr SIZE kHiResSquare = {480, 480};

void UseScreen(SIZE screen) {
    itemState.screenWidth = screen.cx;
    itemState.screenHeight = screen.cy;
}

UsageView ViewOf(UsageMode mode) {
    UsageView view = InitialUsageView();
    view.date = {2006, 12, 5};
    view.mode = mode;
    view.slotCount = mode == UsageMode::Hourly ? 24 : 31;
    return view;
}

UsageView ViewWithRows(int rows, UsageStyle style) {
    UsageView view = ViewOf(UsageMode::Daily);
    view.style = style;
    view.rowsWithData = rows;
    for (int day = 1; day <= rows; ++day) {
        view.series.received[day] = 1024.0 * day;
    }
    return view;
}

std::wstring Bars(UsageView& view) {
    view.series.maximum = 0;
    for (int slot = 0; slot < kSeriesSlots; ++slot) {
        view.series.maximum =
            std::max({view.series.maximum, view.series.transmitted[slot], view.series.received[slot]});
    }
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

std::wstring Texts(const UsageTable& table) {
    std::wstring texts;
    for (int i = 0; i < table.textCount; ++i) {
        texts += std::wstring(table.texts[i].text) + L"|";
    }
    return texts;
}

UsageTable TableOf(const UsageView& view) {
    UsageTable table;
    ArrangeUsageTable(view, table);
    return table;
}

std::wstring Place(const RECT& area) {
    return std::to_wstring(area.left) + L"," + std::to_wstring(area.top) + L"," + std::to_wstring(area.right) + L"," +
           std::to_wstring(area.bottom);
}

TEST(UsageView, Opens_on_today_by_day_as_chart) {
    const UsageView view = InitialUsageView();
    EXPECT_EQ(view.date, Today());
    EXPECT_EQ(view.mode, UsageMode::Daily);
    EXPECT_EQ(view.style, UsageStyle::Chart);
    EXPECT_EQ(view.page, 0);
}

TEST(UsageView, Titles_name_the_day_or_the_month) {
    wchar_t title[48];
    FormatUsageTitle(ViewOf(UsageMode::Hourly), title);
    EXPECT_STREQ(title, L"Hourly Traffic for Dec 5, 2006");
    FormatUsageTitle(ViewOf(UsageMode::Daily), title);
    EXPECT_STREQ(title, L"Daily Traffic for Dec 2006");
}

TEST(UsageView, The_page_goes_back_on_hours_and_on_a_new_date_of_a_table_only) {
    UsageView view = ViewWithRows(31, UsageStyle::Table);
    view.page = 2;
    EXPECT_EQ(ChangeDate(view, view.date), UsageAction::Nothing);
    EXPECT_EQ(ChangeMode(view, view.mode), UsageAction::Nothing);
    EXPECT_EQ(view.page, 2);
    EXPECT_EQ(ChangeDate(view, {2006, 12, 6}), UsageAction::Repaint);
    EXPECT_EQ(view.page, 0);
    view.page = 2;
    EXPECT_EQ(ChangeMode(view, UsageMode::Hourly), UsageAction::Repaint);
    EXPECT_EQ(view.page, 0);
    view.page = 2;
    EXPECT_EQ(ChangeMode(view, UsageMode::Daily), UsageAction::Repaint);
    EXPECT_EQ(view.page, 2);
    view.style = UsageStyle::Chart;
    EXPECT_EQ(ChangeDate(view, {2005, 12, 6}), UsageAction::Repaint);
    EXPECT_EQ(view.page, 2);
}

TEST(UsageView, Reading_counts_every_slot_with_traffic_the_unlisted_hour_0_too) {
    itemState.amPmFormat = true;
    UsageView view = ViewOf(UsageMode::Hourly);
    WriteLog(2006, 12, LogRecord(5, 0, 1, 0) + LogRecord(5, 7, 0, 1) + LogRecord(5, 8, 0, 0) + LogRecord(6, 9, 1, 1));
    ReadUsage(view);
    EXPECT_EQ(view.slotCount, 24);
    EXPECT_EQ(view.rowsWithData, 2);
    EXPECT_EQ(Texts(TableOf(view)), L"07 am|0.00KB|0|0.00KB|1/1|");
    view.date.month = 11;
    view.mode = UsageMode::Daily;
    ReadUsage(view);
    EXPECT_EQ(view.slotCount, 30);
    EXPECT_EQ(view.rowsWithData, 0);
}

struct TapRow {
    SIZE screen;
    int x;
    int y;
    const char* result;
};

// What became of a table on page 1 of 3: chart, export, page 0, page 2 or nothing.
std::string ResultOfTap(const TapRow& row) {
    UseScreen(row.screen);
    UsageView view = ViewWithRows(20, UsageStyle::Table);
    view.page = 1;
    const UsageAction action = TapUsage(view, row.x, row.y);
    if (action == UsageAction::OpenExport) {
        return "export";
    }
    if (view.style == UsageStyle::Chart) {
        return view.page == 1 ? "chart" : "wrong page";
    }
    if ((action == UsageAction::Nothing) != (view.page == 1)) {
        return "wrong action";
    }
    return view.page == 0 ? "previous" : view.page == 2 ? "next" : "nothing";
}

TEST(UsageView, Taps_at_the_bounds_of_every_region) {
    const TapRow rows[] = {
        {kPortrait, 73, 43, "chart"},         {kPortrait, 98, 68, "chart"},
        {kPortrait, 72, 43, "nothing"},       {kPortrait, 99, 68, "nothing"},
        {kPortrait, 73, 42, "nothing"},       {kPortrait, 73, 69, "nothing"},
        {kPortrait, 31, 43, "nothing"},       {kPortrait, 157, 43, "export"},
        {kPortrait, 182, 68, "export"},       {kPortrait, 183, 68, "nothing"},
        {kPortrait, 156, 43, "nothing"},      {kPortrait, 176, 206, "previous"},
        {kPortrait, 193, 215, "previous"},    {kPortrait, 194, 215, "nothing"},
        {kPortrait, 175, 215, "nothing"},     {kPortrait, 176, 216, "nothing"},
        {kPortrait, 150, 206, "next"},        {kPortrait, 167, 215, "next"},
        {kPortrait, 149, 206, "nothing"},     {kPortrait, 168, 206, "nothing"},
        {kPortrait, 150, 205, "nothing"},     {kPortrait, 231, 110, "nothing"},
        {kLandscape, 231, 107, "previous"},   {kLandscape, 255, 120, "previous"},
        {kLandscape, 256, 120, "nothing"},    {kLandscape, 230, 107, "next"},
        {kLandscape, 208, 120, "next"},       {kLandscape, 207, 120, "nothing"},
        {kLandscape, 208, 121, "nothing"},    {kLandscape, 208, 106, "nothing"},
        {kLandscape, 176, 206, "nothing"},    {kHiResPortrait, 146, 86, "chart"},
        {kHiResPortrait, 196, 136, "chart"},  {kHiResPortrait, 197, 136, "nothing"},
        {kHiResPortrait, 145, 86, "nothing"}, {kHiResPortrait, 352, 412, "previous"},
        {kHiResPortrait, 334, 430, "next"},   {kHiResPortrait, 335, 430, "nothing"},
        {kHiResSquare, 461, 214, "next"},     {kHiResSquare, 462, 214, "previous"},
        {kHiResSquare, 510, 240, "previous"}, {kHiResSquare, 352, 412, "nothing"},
    };
    for (const TapRow& row : rows) {
        EXPECT_EQ(ResultOfTap(row), row.result) << row.screen.cx << ' ' << row.x << ' ' << row.y;
    }
}

TEST(UsageView, Pages_end_where_the_rows_end_and_turn_under_the_chart_too) {
    UseScreen(kPortrait);
    for (const auto& [rows, lastPage] : {std::pair{0, 0}, {8, 0}, {9, 1}, {16, 1}, {31, 3}}) {
        UsageView view = ViewWithRows(rows, UsageStyle::Chart);
        for (int i = 0; i < 5; ++i) {
            TapUsage(view, 150, 210);
        }
        EXPECT_EQ(view.page, lastPage) << rows;
        EXPECT_EQ(TapUsage(view, 31, 43), UsageAction::Repaint);  // to the table, which starts over
        EXPECT_EQ(view.page, 0);
        EXPECT_EQ(TapUsage(view, 176, 210), UsageAction::Nothing);
    }
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
    struct Row {
        double maximum;
        double value;
        int height;
    };
    const Row rows[] = {{1023, 1023, 99},  {1000, 1000, 97},       {1024, 1024, 10},   {10239, 102, 0},
                        {10239, 103, 1},   {1048576, 1048576, 51}, {2e9, 1.9e9, 92},   {2048000000, 2048000000, 100},
                        {5e12, 5e12, 100}, {5e12, 20479999, 0},    {5e12, 20480001, 1}};
    for (const Row& row : rows) {
        UsageView view = ViewOf(UsageMode::Daily);
        view.series.transmitted[1] = row.value;
        view.series.maximum = row.maximum;
        UsageChart chart;
        ArrangeUsageChart(view, chart);
        EXPECT_EQ(chart.barCount == 0 ? 0 : chart.bars[0].foot - chart.bars[0].top, row.height) << row.value;
    }
}

TEST(UsageChart, Background_and_labels_have_their_places) {
    UsageView view = ViewOf(UsageMode::Hourly);
    UsageChart chart;
    UseScreen(kPortrait);
    ArrangeUsageChart(view, chart);
    EXPECT_EQ(chart.background.bitmap, IDB_CHART_HOURLY);
    EXPECT_EQ(chart.background.x + chart.background.width, 204);
    EXPECT_STREQ(chart.labels[0].text, L"1.0KB");
    EXPECT_EQ(Place(chart.labels[0].area), L"2,88,29,103");
    EXPECT_EQ(Place(chart.labels[4].area), L"2,168,29,183");
    UseScreen(kHiResPortrait);
    view.mode = UsageMode::Daily;
    ArrangeUsageChart(view, chart);
    EXPECT_EQ(chart.background.bitmap, IDB_CHART_DAILY);
    EXPECT_EQ(chart.background.y, 144);
    EXPECT_EQ(chart.background.height, 268);
    EXPECT_EQ(Place(chart.labels[4].area), L"4,336,58,366");
}

TEST(UsageTable, Nine_rows_make_two_pages) {
    UseScreen(kPortrait);
    UsageView view = ViewWithRows(9, UsageStyle::Table);
    UsageTable table = TableOf(view);
    EXPECT_EQ(table.textCount, 8 * 4 + 1);
    EXPECT_STREQ(table.texts[32].text, L"1/2");
    view.page = 1;
    EXPECT_EQ(Texts(TableOf(view)), L"9|0|9.00KB|9.00KB|2/2|");
    EXPECT_EQ(Texts(TableOf(ViewWithRows(0, UsageStyle::Table))), L"0/0|");
    EXPECT_EQ(TableOf(ViewWithRows(31, UsageStyle::Table)).texts[32].text, std::wstring(L"1/4"));
}

TEST(UsageTable, Cells_stand_in_their_columns) {
    UsageView view = ViewWithRows(9, UsageStyle::Table);
    UseScreen(kPortrait);
    UsageTable table = TableOf(view);
    EXPECT_EQ(Place(table.texts[0].area), L"10,89,41,101");
    EXPECT_EQ(Place(table.texts[1].area), L"46,89,89,101");
    EXPECT_EQ(Place(table.texts[30].area), L"94,187,137,199");
    EXPECT_EQ(Place(table.texts[31].area), L"142,187,198,199");
    EXPECT_EQ(Place(table.texts[32].area), L"10,205,105,218");
    EXPECT_EQ(table.arrows.x, 148);
    EXPECT_EQ(table.arrows.y, 204);
    UseScreen(kHiResSquare);
    table = TableOf(view);
    EXPECT_EQ(Place(table.texts[0].area), L"20,178,82,202");
    EXPECT_EQ(Place(table.texts[32].area), L"416,174,476,234");
    EXPECT_EQ(table.arrows.x, 416);
    EXPECT_EQ(table.arrows.y, 214);
    EXPECT_EQ(table.arrows.width, 94);
}

TEST(UsageTable, Hours_are_labelled_in_the_chosen_format) {
    UseScreen(kPortrait);
    struct Row {
        int hour;
        const wchar_t* amPm;
        const wchar_t* military;
    };
    const Row rows[] = {{1, L"01 am", L"01:00"},
                        {11, L"11 am", L"11:00"},
                        {12, L"12 pm", L"12:00"},
                        {13, L"01 pm", L"13:00"},
                        {23, L"11 pm", L"23:00"}};
    for (const Row& row : rows) {
        UsageView view = ViewOf(UsageMode::Hourly);
        view.series.transmitted[row.hour] = 1;
        itemState.amPmFormat = true;
        EXPECT_STREQ(TableOf(view).texts[0].text, row.amPm);
        itemState.amPmFormat = false;
        EXPECT_STREQ(TableOf(view).texts[0].text, row.military);
    }
}

}  // namespace
