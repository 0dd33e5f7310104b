// The charts and the usage view: the ladders of scales, bars and lines by place and height, tables and their pages.
#include <gtest/gtest.h>

#include "charts/live_graph.h"
#include "charts/usage_chart.h"
#include "charts/usage_table.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/traffic_logs.h"

namespace {

// Climbs a ladder from bound to bound. Returns the uppermost labels.
template <class Value>
std::wstring Climb(const ScaleStep& (*scale)(Value), double beforeBound) {
    std::wstring tops;
    for (double from = 0;;) {
        const ScaleStep& step = scale(static_cast<Value>(from));
        const bool isLast = step.labels[0][0] == '>';
        wchar_t* unit = nullptr;
        const double top = wcstod(step.labels[0] + isLast, &unit);
        tops += step.labels[0] + std::wstring(L" ");
        if (isLast || step.fullScale <= from) {
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
    ArrangeLiveGraph(graph);
    return graph.labels[0].text + (L" " + Described(graph.lines.data(), graph.lineCount, 114));
}

TEST(LiveGraph, Heights_are_cut_percentages_of_the_scale_and_a_full_ring_begins_with_its_oldest) {
    const std::tuple<uint32_t, uint32_t, const wchar_t*> rows[] = {
        {0, 512, L"1.0KB R168:50 "},
        {1023, 10, L"1.0KB T168:99 "},
        {1024, 103, L"10KB T168:10 R168:1 "},
        {300, 700, L"1.0KB R168:68 T168:29 "},
        {42949672, 1, L">10MB T168:4 "},
        {42949673, 42949672, L">10MB R168:4 "}};  // the product wraps to 4: drawn first, but without height
    itemState.sampleCount = 1;
    for (const auto& [transmitted, received, lines] : rows) {
        itemState.outDeltas[0] = transmitted;
        itemState.inDeltas[0] = received;
        EXPECT_EQ(LiveLines(), lines);
    }
    itemState.sampleCount = 2;  // the newest stands at the right
    itemState.outDeltas[0] = itemState.inDeltas[0] = 103;
    itemState.inDeltas[1] = 206;
    itemState.inDeltas[7] = 5000000;  // not a sample
    EXPECT_EQ(LiveLines(), L"1.0KB T161:10 R161:10 R168:20 ");
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
    view.slotCount = mode == UsageMode::Hourly ? 24 : 30;
    return view;
}

using Values = std::vector<double>;

std::wstring Bars(UsageMode mode, const Values& transmitted, const Values& received) {
    UsageView view = ViewOf(mode);
    std::ranges::copy(transmitted, view.series.transmitted.begin());
    std::ranges::copy(received, view.series.received.begin());
    view.series.maximum = std::max(std::ranges::max(transmitted), std::ranges::max(received));
    UsageChart chart;
    ArrangeUsageChart(view, chart);
    return Described(chart.bars.data(), chart.barCount, ScreenScale() == 1 ? 193 : 388);
}

TEST(UsageChart, Bars_stand_at_their_slots_the_shorter_in_front_and_end_at_a_hundred_whole_percent) {
    Values lastHour(24);
    lastHour[23] = 512;
    EXPECT_EQ(Bars(UsageMode::Hourly, {1000}, lastHour), L"T37:97 R198:50 ");
    // There is no day 0, and two of 14 % are one red bar.
    const Values transmitted = {1000, 100, 200, 150, 145}, received = {0, 200, 100, 150, 146};
    EXPECT_EQ(Bars(UsageMode::Daily, transmitted, received), L"R35:19 T35:9 T40:19 R40:9 T45:14 T50:14 ");
    EXPECT_EQ(Bars(UsageMode::Daily, {0, 14848}, {0}), L"T35:28 ")
        << "29 % but for the inverse that is multiplied with";
    EXPECT_EQ(Bars(UsageMode::Daily, {0, 10239, 102, 103}, {0}), L"T35:99 T45:1 ");
    EXPECT_EQ(Bars(UsageMode::Daily, {0, 5e12, 20479999, 20480001}, {0}), L"T35:100 T45:1 ");
    scripted::system.screen = {480, 480};
    RefreshScreenSize();
    EXPECT_EQ(Bars(UsageMode::Hourly, {1000}, lastHour), L"T74:194 R396:100 ");
}

// A page of a table of the log.
std::wstring Page(UsageMode mode, int page) {
    UsageView view = ViewOf(mode);
    ReadUsage(view);
    view.page = page;
    UsageTable table;
    ArrangeUsageTable(view, table);
    std::wstring texts;
    for (const ChartText& text : std::span(table.texts).first(static_cast<size_t>(table.textCount))) {
        texts += text.text + std::wstring(L" ");
    }
    return texts;
}

TEST(UsageTable, Eight_slots_make_a_page_and_the_hour_0_counts_without_a_row) {
    EXPECT_EQ(Page(UsageMode::Daily, 0), L"0/0 ");
    WriteLog(2006, 12, FullMonth(2006, 12, 2048, 1024));
    EXPECT_TRUE(Page(UsageMode::Daily, 3).ends_with(L"31 24.00KB 48.00KB 72.00KB 4/4 "));
    WriteLog(2006, 12, LogRecord(5, 0, 1, 0) + LogRecord(5, 11, 0, 1) + LogRecord(5, 12, 1, 0) + LogRecord(5, 8, 0, 0));
    EXPECT_EQ(Page(UsageMode::Hourly, 0), L"11:00 0.00KB 0 0.00KB 12:00 0 0.00KB 0.00KB 1/1 ");
    itemState.amPmFormat = true;
    EXPECT_EQ(Page(UsageMode::Hourly, 0), L"11 am 0.00KB 0 0.00KB 12 pm 0 0.00KB 0.00KB 1/1 ");
}

// The arrows are tapped at opposite corners.
TEST(UsageView, Pages_end_with_the_rows_and_every_change_but_a_charts_date_turns_back) {
    const std::tuple<SIZE, POINT, POINT> screens[] = {{{240, 320}, {176, 206}, {167, 215}},
                                                      {{480, 480}, {462, 214}, {461, 240}}};
    UsageView view = ViewOf(UsageMode::Daily);
    view.rowsWithData = 16;
    for (const auto& [screen, previous, next] : screens) {
        scripted::system.screen = screen;
        RefreshScreenSize();
        std::string pages;
        for (const POINT& arrow : {previous, next, next, previous, previous}) {
            TapUsage(view, arrow.x, arrow.y);
            pages += std::to_string(view.page);
        }
        EXPECT_EQ(pages, "01100");
    }
    view.page = 1;
    ChangeDate(view, {2005, 12, 5});
    EXPECT_EQ(view.page, 1);
    ChangeMode(view, UsageMode::Hourly);
    EXPECT_EQ(view.page, 0);
    view.page = 1;
    view.style = UsageStyle::Table;
    ChangeDate(view, {2005, 12, 6});
    EXPECT_EQ(view.page, 0);
}

}  // namespace
