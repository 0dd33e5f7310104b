// The usage view's state: dates, modes, taps, pages.

#include <gtest/gtest.h>

#include "charts/usage_table.h"
#include "tests/support/traffic_logs.h"
#include "tests/support/usage_views.h"

namespace {

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
    UsageTable table;
    ArrangeUsageTable(view, table);
    EXPECT_EQ(table.textCount, 5);
    EXPECT_STREQ(table.texts[0].text, L"07 am");
    EXPECT_STREQ(table.texts[4].text, L"1/1");
    view.date.month = 11;
    ReadUsage(view);
    EXPECT_EQ(view.rowsWithData, 0);
}

// What became of a table on page 1 of 3: chart, export, page 0, page 2 or nothing.
std::string ResultOfTap(SIZE screen, int x, int y) {
    UseScreen(screen);
    UsageView view = ViewWithRows(20, UsageStyle::Table);
    view.page = 1;
    const UsageAction action = TapUsage(view, x, y);
    const bool isChart = view.style == UsageStyle::Chart;
    EXPECT_EQ(action == UsageAction::Repaint, isChart || view.page != 1);
    return action == UsageAction::OpenExport ? "export"
           : isChart                         ? "chart"
           : view.page == 0                  ? "previous"
           : view.page == 2                  ? "next"
                                             : "nothing";
}

TEST(UsageView, Taps_at_the_bounds_of_every_region) {
    const std::tuple<SIZE, RECT, const char*> regions[] = {
        {kPortrait, {73, 43, 98, 68}, "chart"},         {kPortrait, {157, 43, 182, 68}, "export"},
        {kPortrait, {176, 206, 193, 215}, "previous"},  {kPortrait, {150, 206, 167, 215}, "next"},
        {kLandscape, {231, 107, 255, 120}, "previous"}, {kLandscape, {208, 107, 230, 120}, "next"},
        {kHiResPortrait, {146, 86, 196, 136}, "chart"}, {kHiResPortrait, {352, 412, 386, 430}, "previous"},
        {kHiResPortrait, {300, 412, 334, 430}, "next"}, {kHiResSquare, {462, 214, 510, 240}, "previous"},
        {kHiResSquare, {416, 214, 461, 240}, "next"},
    };
    for (const auto& [screen, area, result] : regions) {
        EXPECT_EQ(ResultOfTap(screen, area.left, area.top), result) << screen.cx << ' ' << result;
        EXPECT_EQ(ResultOfTap(screen, area.right, area.bottom), result) << screen.cx << ' ' << result;
        EXPECT_NE(ResultOfTap(screen, area.left - 1, area.top), result) << screen.cx << ' ' << result;
        EXPECT_NE(ResultOfTap(screen, area.right + 1, area.bottom), result) << screen.cx << ' ' << result;
        EXPECT_EQ(ResultOfTap(screen, area.left, area.top - 1), "nothing") << screen.cx << ' ' << result;
        EXPECT_EQ(ResultOfTap(screen, area.right, area.bottom + 1), "nothing") << screen.cx << ' ' << result;
    }
    EXPECT_EQ(ResultOfTap(kPortrait, 31, 43), "nothing") << "it is the table already";
    EXPECT_EQ(ResultOfTap(kPortrait, 231, 110), "nothing");
    EXPECT_EQ(ResultOfTap(kLandscape, 176, 206), "nothing");
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

}  // namespace
