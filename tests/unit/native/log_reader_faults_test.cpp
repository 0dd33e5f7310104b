// What readers make of a file system that fails, and several years of logs against an independent sum.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "charts/usage_chart.h"
#include "charts/usage_table.h"
#include "item/item_state.h"
#include "tests/fakes/fakes.h"
#include "tests/support/traffic_logs.h"
#include "trafficlog/export_writer.h"

namespace {

constexpr CalendarDate kDay = {2006, 3, 5};

std::string Csv() {
    const Bytes csv = ReadWholeFile(L"out.csv");
    return {csv.begin(), csv.end()};
}

TEST(LogReaderFaults, Reading_stops_at_the_first_failed_read) {
    WriteLog(2006, 3, FullMonth(2006, 3, 1, 1));
    TrafficSeries series;
    fakes::FailCall("ReadFile", 1, 100);
    EXPECT_EQ(ReadTrafficLog(UsageMode::Daily, kDay, series), 31);
    EXPECT_EQ(series.received[1], 0);
    EXPECT_EQ(fakes::CallCount("ReadFile"), 1);
    fakes::FailCall("ReadFile", 2);
    ReadTrafficLog(UsageMode::Daily, kDay, series);
    EXPECT_EQ(series.received[1], 24);
    EXPECT_EQ(series.received[31], 0);
}

TEST(LogReaderFaults, An_export_reads_again_and_ends_a_month_that_stays_unreadable) {
    WriteLog(2006, 3, FullMonth(2006, 3, 1024, 0));
    const ExportRange day = {{2006, 3, 1}, {2006, 3, 1}};
    fakes::FailCall("ReadFile", 1, 3);
    EXPECT_TRUE(ExportTraffic(DataPath(L"out.csv").c_str(), day));
    EXPECT_NE(Csv().find("\"Total for Mar 2006\",\"0\",\"24.00KB\""), std::string::npos);
    fakes::FailCall("ReadFile", 1, 1000);
    EXPECT_TRUE(ExportTraffic(DataPath(L"out.csv").c_str(), day));
    fakes::FailCall("ReadFile", 0, 0);
    EXPECT_NE(Csv().find("\"Total for Mar 2006\",\"0\",\"0\",\"0\""), std::string::npos);
}

TEST(LogReaderFaults, Failing_writes_and_a_failing_creation_are_survived) {
    WriteLog(2006, 3, FullMonth(2006, 3, 1024, 0));
    fakes::FailCall("WriteFile", 1, 1000);
    EXPECT_TRUE(ExportTraffic(DataPath(L"out.csv").c_str(), {{2006, 3, 1}, {2006, 3, 31}}));
    fakes::FailCall("CreateFileW", 1);
    EXPECT_FALSE(ExportTraffic(DataPath(L"out.csv").c_str(), {{2006, 3, 1}, {2006, 3, 31}}));
}

// One line per fact, for the script that computes the same facts from the bytes of the logs.
void DescribeView(std::ofstream& out, UsageView& view) {
    ReadUsage(view);
    const bool hourly = view.mode == UsageMode::Hourly;
    out << "view " << (hourly ? "hourly " : "daily ") << view.date.year << ' ' << view.date.month << ' '
        << view.date.day << "\nslots " << view.slotCount << "\nmaximum " << view.series.maximum << "\ntransmitted";
    for (const double value : view.series.transmitted) {
        out << ' ' << value;
    }
    out << "\nreceived";
    for (const double value : view.series.received) {
        out << ' ' << value;
    }
    UsageChart chart;
    ArrangeUsageChart(view, chart);
    const std::wstring top = chart.labels[0].text;
    const std::wstring bottom = chart.labels[4].text;
    out << "\nlabels " << std::string(top.begin(), top.end()) << ' ' << std::string(bottom.begin(), bottom.end())
        << "\nbars";
    for (int i = 0; i < chart.barCount; ++i) {
        const ChartBar& bar = chart.bars[i];
        out << ' ' << (bar.traffic == Traffic::Transmitted ? 'T' : 'R') << bar.x << ':' << bar.foot - bar.top;
    }
    out << '\n';
    for (view.page = 0; view.page == 0 || view.page * kRowsPerPage < view.rowsWithData; ++view.page) {
        UsageTable table;
        ArrangeUsageTable(view, table);
        out << "page";
        for (int i = 0; i < table.textCount; ++i) {
            const std::wstring text = table.texts[i].text;
            out << ' ' << std::string(text.begin(), text.end());
        }
        out << '\n';
    }
    view.page = 0;
}

TEST(TrafficHistory, Charts_tables_and_exports_agree_with_an_independent_sum) {
    WriteYearsOfLogs();
    const std::wstring folder = itemState.dataFolder;
    const std::string name(folder.rbegin(), std::find(folder.rbegin(), folder.rend(), L'\\'));
    const auto root = fakes::Root() / "quorvane-tests" / std::string(name.rbegin(), name.rend());
    std::ofstream out(root / "views.txt");
    out.precision(17);
    itemState.amPmFormat = false;
    UsageView view = InitialUsageView();
    for (int index = 2003 * 12 + 9; index <= 2007 * 12; ++index) {
        view.date = {index / 12, index % 12 + 1, 1};
        view.mode = UsageMode::Daily;
        DescribeView(out, view);
        view.mode = UsageMode::Hourly;
        for (; view.date.day <= DaysInMonth(view.date.year, view.date.month); ++view.date.day) {
            DescribeView(out, view);
        }
    }
    out.close();
    const ExportRange ranges[] = {{{2003, 10, 1}, {2007, 1, 31}}, {{2004, 2, 10}, {2004, 2, 20}},
                                  {{2004, 7, 15}, {2004, 8, 2}},  {{2005, 12, 15}, {2006, 1, 10}},
                                  {{2005, 3, 5}, {2005, 4, 29}},  {{2006, 2, 28}, {2006, 2, 28}}};
    for (const ExportRange& range : ranges) {
        wchar_t file[64];
        FormatText(file, L"export-%04d-%02d-%02d-%04d-%02d-%02d.csv", range.from.year, range.from.month, range.from.day,
                   range.to.year, range.to.month, range.to.day);
        EXPECT_TRUE(ExportTraffic(DataPath(file).c_str(), range));
    }
    const auto script = std::filesystem::path(QUORVANE_SOURCE_DIR) / "tests/support/check_traffic_history.py";
    EXPECT_EQ(std::system(("python3 " + script.string() + " " + root.string()).c_str()), 0);
}

}  // namespace
