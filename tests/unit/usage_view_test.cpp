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

}  // namespace
