// The charts and the usage view: the ladders of scales, bars and lines by place and height, tables, taps.
#include <gtest/gtest.h>

#include "charts/live_graph.h"
#include "charts/usage_chart.h"
#include "charts/usage_table.h"
#include "item/item_state.h"
#include "platform/format_text.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/traffic_logs.h"

namespace {

constexpr SIZE kPortrait = {240, 320}, kLandscape = {320, 240}, kHiRes = {480, 640}, kHiResSquare = {480, 480};

void UseScreen(SIZE screen) {
    scripted::system.screen = screen;
    RefreshScreenSize();
}

// Climbs a ladder from bound to bound. Returns the uppermost labels; those below have to divide them evenly.
template <class Value>
std::wstring Climb(const ScaleStep& (*scale)(Value), double beforeBound) {
    std::wstring tops;
    for (double from = 0;;) {
        const ScaleStep& step = scale(static_cast<Value>(from));
        const auto& labels = step.labels;
        const bool isLast = labels[0][0] == '>';
        wchar_t* unit = nullptr;
        const double top = wcstod(labels[0] + isLast, &unit);
        for (int i = 1; i < kAxisLabels; ++i) {
            wchar_t* itsUnit = nullptr;
            EXPECT_NEAR(wcstod(labels[i], &itsUnit) * 5, top * (5 - i), 1e-9) << from;
            EXPECT_STREQ(itsUnit, unit) << from;
            EXPECT_EQ(wcschr(labels[i], '.') != nullptr, wcschr(labels[1], '.') != nullptr) << from;
        }
        tops += labels[0] + std::wstring(L" ");
        if (isLast) {
            return tops;
        }
        // An axis counts unlike the texts of byte counts.
        EXPECT_EQ(step.fullScale, top * (*unit == 'K' ? 1024 : *unit == 'M' ? 1024000 : 1024000000)) << from;
        EXPECT_EQ(&scale(static_cast<Value>(step.fullScale - beforeBound)), &step) << from;
        from = step.fullScale;
    }
}

TEST(ScaleLadder, Steps_start_at_their_bound) {
    EXPECT_EQ(Climb(UsageScale, 1.0 / 1024),
              L"1.0KB 10KB 50KB 100KB 200KB 300KB 400KB 500KB 600KB 700KB 800KB 900KB 1.0MB 2.0MB 3.0MB 4.0MB 5MB "
              L"6.0MB 7.0MB 8.0MB 9.0MB 10MB 20MB 30MB 40MB 50MB 60MB 70MB 80MB 90MB 100MB 1.0GB >2GB ");
    EXPECT_EQ(Climb(LiveScale, 1),
              L"1.0KB 10KB 100KB 200KB 300KB 400KB 500KB 600KB 700KB 800KB 900KB 1.0MB 2.0MB 3.0MB 4.0MB 5MB "
              L"6.0MB 7.0MB 8.0MB 9.0MB 10MB >10MB ");
}

// Traffic, place and height of each bar.
std::wstring Described(const ChartBar* bars, int count, int foot) {
    std::wstring all;
    for (const ChartBar& bar : std::span(bars, static_cast<size_t>(count))) {
        wchar_t text[40];
        FormatText(text, L"%s%d:%d ", bar.traffic == Traffic::Transmitted ? L"T" : L"R", bar.x, bar.foot - bar.top);
        all += text;
        EXPECT_EQ(bar.foot, foot);
    }
    return all;
}

// With the uppermost label.
std::wstring LiveLines() {
    LiveGraph graph;
    if (!ArrangeLiveGraph(graph)) {
        return L"none";
    }
    return graph.labels[0].text + (L" " + Described(graph.lines.data(), graph.lineCount, 114 * ScreenScale()));
}

TEST(LiveGraph, Heights_are_cut_percentages_of_the_scale) {
    EXPECT_EQ(LiveLines(), L"none") << "without samples";
    // The product of the last but one wraps to 4: it is drawn first, but has no height.
    const std::tuple<uint32_t, uint32_t, const wchar_t*> rows[] = {{0, 0, L"1.0KB "},
                                                                   {0, 512, L"1.0KB R168:50 "},
                                                                   {1023, 10, L"1.0KB T168:99 "},
                                                                   {1023, 11, L"1.0KB T168:99 R168:1 "},
                                                                   {1024, 103, L"10KB T168:10 R168:1 "},
                                                                   {300, 700, L"1.0KB R168:68 T168:29 "},
                                                                   {700, 700, L"1.0KB T168:68 R168:68 "},
                                                                   {12000000, 10240000, L">10MB T168:1 R168:1 "},
                                                                   {42949672, 1, L">10MB T168:4 "},
                                                                   {42949673, 42949672, L">10MB R168:4 "},
                                                                   {0xFFFFFFFF, 85899346, L">10MB T168:4 "}};
    for (const auto& [transmitted, received, lines] : rows) {
        itemState.sampleCount = 1;
        itemState.ringIndex = 0;
        itemState.outDeltas[0] = transmitted;
        itemState.inDeltas[0] = received;
        EXPECT_EQ(LiveLines(), lines) << transmitted;
    }
}

TEST(LiveGraph, The_newest_sample_stands_at_the_right_and_a_full_ring_begins_with_its_oldest) {
    itemState.sampleCount = 2;
    itemState.outDeltas[0] = 103;
    itemState.inDeltas[1] = 206;
    itemState.inDeltas[7] = 5000000;  // not a sample
    UseScreen(kHiRes);
    EXPECT_EQ(LiveLines(), L"1.0KB T322:20 R336:40 ");
    UseScreen(kPortrait);
    itemState.sampleCount = kSampleSlots;
    itemState.ringStart = 7;
    EXPECT_EQ(LiveLines(), L"5MB R35:97 ");
    itemState.ringStart = 8;
    EXPECT_EQ(LiveLines(), L"5MB R168:97 ");
}

UsageView ViewOf(UsageMode mode) {
    UsageView view = InitialUsageView();
    view.date = {2006, 12, 5};
    view.mode = mode;
    view.slotCount = mode == UsageMode::Hourly ? 24 : 31;
    return view;
}

std::wstring Bars(UsageView& view) {
    view.series.maximum = std::max(std::ranges::max(view.series.transmitted), std::ranges::max(view.series.received));
    UsageChart chart;
    ArrangeUsageChart(view, chart);
    return Described(chart.bars.data(), chart.barCount, ScreenScale() == 1 ? 193 : 388);
}

TEST(UsageChart, Bars_stand_at_their_slots_the_shorter_in_front_and_equal_ones_as_one_red_bar) {
    UseScreen(kPortrait);
    UsageView hours = ViewOf(UsageMode::Hourly);
    hours.series.transmitted[0] = 1000;
    hours.series.received[23] = 512;
    EXPECT_EQ(Bars(hours), L"T37:97 R198:50 ");
    UsageView days = ViewOf(UsageMode::Daily);
    days.slotCount = 30;
    days.series.transmitted = {1000, 100, 200, 150, 145};  // there is no day 0
    days.series.received = {0, 200, 100, 150, 146};        // both 14 % on the last day: equal on the screen
    days.series.received[31] = 512;
    EXPECT_EQ(Bars(days), L"R35:19 T35:9 T40:19 R40:9 T45:14 T50:14 ");
    UseScreen(kHiResSquare);
    EXPECT_EQ(Bars(hours), L"T74:194 R396:100 ");
}

TEST(UsageChart, Percentages_are_cut_to_whole_ones_and_end_at_a_hundred) {
    const std::pair<std::vector<double>, const wchar_t*> rows[] = {
        {{1023}, L"T35:99 "},        {{1000}, L"T35:97 "},
        {{1024}, L"T35:10 "},        {{10239, 102, 103}, L"T35:99 T45:1 "},
        {{1048576}, L"T35:51 "},     {{1999999999, 1.9e9}, L"T35:97 T40:92 "},
        {{2048000000}, L"T35:100 "}, {{5e12, 20479999, 20480001}, L"T35:100 T45:1 "}};
    for (const auto& [values, bars] : rows) {
        UsageView view = ViewOf(UsageMode::Daily);
        std::copy(values.begin(), values.end(), view.series.transmitted.begin() + 1);
        EXPECT_EQ(Bars(view), bars);
    }
}

// A page's texts.
std::wstring TextsOf(const UsageView& view) {
    UsageTable table;
    ArrangeUsageTable(view, table);
    std::wstring texts;
    for (const ChartText& text : std::span(table.texts).first(static_cast<size_t>(table.textCount))) {
        texts += text.text + std::wstring(L" ");
    }
    return texts;
}

UsageView TableWithRows(int rows) {
    UsageView view = ViewOf(UsageMode::Daily);
    view.style = UsageStyle::Table;
    view.rowsWithData = rows;
    std::fill_n(view.series.received.begin() + 1, rows, 1024);
    return view;
}

TEST(UsageTable, Eight_rows_make_a_page_and_hours_are_labelled_in_the_chosen_format) {
    UsageView view = TableWithRows(9);
    EXPECT_TRUE(TextsOf(view).ends_with(L"8 0 1.00KB 1.00KB 1/2 "));
    view.page = 1;
    EXPECT_EQ(TextsOf(view), L"9 0 1.00KB 1.00KB 2/2 ");
    EXPECT_EQ(TextsOf(TableWithRows(0)), L"0/0 ");
    // The hour 0 counts, but has no row.
    WriteLog(2006, 12,
             LogRecord(5, 0, 1, 0) + LogRecord(5, 11, 0, 1) + LogRecord(5, 12, 1, 0) + LogRecord(5, 8, 0, 0) +
                 LogRecord(5, 13, 0, 1) + LogRecord(6, 9, 1, 1));
    UsageView hours = ViewOf(UsageMode::Hourly);
    ReadUsage(hours);
    EXPECT_EQ(std::pair(hours.slotCount, hours.rowsWithData), std::pair(24, 4));
    itemState.amPmFormat = true;
    EXPECT_EQ(TextsOf(hours), L"11 am 0.00KB 0 0.00KB 12 pm 0 0.00KB 0.00KB 01 pm 0.00KB 0 0.00KB 1/1 ");
    itemState.amPmFormat = false;
    EXPECT_EQ(TextsOf(hours), L"11:00 0.00KB 0 0.00KB 12:00 0 0.00KB 0.00KB 13:00 0.00KB 0 0.00KB 1/1 ");
}

// Page and style of the view, and what is to be done.
std::string After(UsageAction action, const UsageView& view) {
    return std::to_string(view.page) + (view.style == UsageStyle::Chart ? " chart" : " table") +
           (action == UsageAction::Nothing   ? ""
            : action == UsageAction::Repaint ? ", repaint"
                                             : ", export");
}

TEST(UsageView, Taps_at_the_bounds_of_every_region) {
    const std::tuple<SIZE, RECT, const char*> regions[] = {
        {kPortrait, {73, 43, 98, 68}, "1 chart, repaint"},
        {kPortrait, {157, 43, 182, 68}, "1 table, export"},
        {kPortrait, {176, 206, 193, 215}, "0 table, repaint"},
        {kPortrait, {150, 206, 167, 215}, "2 table, repaint"},
        {kLandscape, {231, 107, 255, 120}, "0 table, repaint"},
        {kLandscape, {208, 107, 230, 120}, "2 table, repaint"},
        {kHiRes, {352, 412, 386, 430}, "0 table, repaint"},
        {kHiResSquare, {462, 214, 510, 240}, "0 table, repaint"},
    };
    const auto tap = [](int x, int y) {
        UsageView view = TableWithRows(20);
        view.page = 1;
        return After(TapUsage(view, x, y), view);
    };
    for (const auto& [screen, area, result] : regions) {
        UseScreen(screen);
        EXPECT_EQ(tap(area.left, area.top), result) << screen.cx;
        EXPECT_EQ(tap(area.right, area.bottom), result) << screen.cx;
        EXPECT_NE(tap(area.left - 1, area.top), result) << screen.cx;
        EXPECT_NE(tap(area.right + 1, area.bottom), result) << screen.cx;
        EXPECT_EQ(tap(area.left, area.top - 1), "1 table") << screen.cx << result;
        EXPECT_EQ(tap(area.right, area.bottom + 1), "1 table") << screen.cx << result;
    }
}

// Back on hours, on a new date of a table, and when the table is chosen.
TEST(UsageView, Pages_end_with_the_rows_turn_under_the_chart_too_and_go_back) {
    UseScreen(kPortrait);
    UsageView view = TableWithRows(16);
    EXPECT_EQ(After(TapUsage(view, 176, 210), view), "0 table");
    EXPECT_EQ(After(TapUsage(view, 150, 210), view), "1 table, repaint");
    EXPECT_EQ(After(TapUsage(view, 150, 210), view), "1 table");
    EXPECT_EQ(After(ChangeDate(view, view.date), view), "1 table");
    EXPECT_EQ(After(ChangeDate(view, {2006, 12, 6}), view), "0 table, repaint");
    view = TableWithRows(17);
    view.style = UsageStyle::Chart;
    view.page = 1;
    EXPECT_EQ(After(TapUsage(view, 150, 210), view), "2 chart, repaint");
    EXPECT_EQ(After(ChangeDate(view, {2005, 12, 6}), view), "2 chart, repaint");
    EXPECT_EQ(After(ChangeMode(view, UsageMode::Daily), view), "2 chart");
    EXPECT_EQ(After(ChangeMode(view, UsageMode::Hourly), view), "0 chart, repaint");
    view.page = 2;
    EXPECT_EQ(After(ChangeMode(view, UsageMode::Daily), view), "2 chart, repaint");
    EXPECT_EQ(After(TapUsage(view, 31, 43), view), "0 table, repaint");
    EXPECT_EQ(After(TapUsage(view, 31, 43), view), "0 table");
}

}  // namespace
