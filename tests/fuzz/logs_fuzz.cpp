// A month's log of any bytes, through everything that reads it (series, chart, table, export) and through the writer;
// and any name of a file as that of such a log.

#include <algorithm>
#include <string>

#include "charts/usage_chart.h"
#include "charts/usage_table.h"
#include "item/item_state.h"
#include "options/log_months.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/support/traffic_logs.h"
#include "trafficlog/export_writer.h"
#include "trafficlog/log_file.h"

namespace {

void ReadAndArrange(UsageMode mode) {
    UsageView view = InitialUsageView();
    view.date = {2006, 12, 5};
    view.mode = mode;
    ReadUsage(view);
    UsageChart chart;
    ArrangeUsageChart(view, chart);
    for (int i = 0; i < chart.barCount; ++i) {
        const int height = chart.bars[i].foot - chart.bars[i].top;
        Demand(height > 0 && height <= 100 * ScreenScale());
    }
    for (view.page = 0; view.page < 5; ++view.page) {
        UsageTable table;
        ArrangeUsageTable(view, table);
    }
}

// A tick changes the two counts of one record, or appends one.
void AddTick(const Bytes& before) {
    LogTrafficAt({2006, 12, 0, 5, 10, 0, 0, 0}, 3, 4);
    const Bytes after = ReadWholeFile(L"200612.log");
    Demand(after != before);
    Demand(after.size() == before.size() || after.size() == before.size() + sizeof(TrafficLogRecord));
    ptrdiff_t changed = 0;
    for (size_t i = 0; i < before.size(); ++i) {
        changed += before[i] != after[i];
    }
    Demand(changed <= 8);
}

void FeedLog(Input input) {
    const Bytes log(input.begin(), input.end());
    WriteLog(2006, 12, log);
    ReadAndArrange(UsageMode::Daily);
    ReadAndArrange(UsageMode::Hourly);
    Demand(ExportTraffic(DataPath(L"out.csv").c_str(), {{2006, 12, 3}, {2006, 12, 20}}));
    const Bytes csv = ReadWholeFile(L"out.csv");
    Demand(!csv.empty() && csv.back() == '\n');
    AddTick(log);
}

const Fuzzer kLogReader("log_reader",
                        {"trafficlog/log_reader.cpp", "trafficlog/log_file.cpp", "trafficlog/export_writer.cpp",
                         "charts/usage_chart.cpp", "charts/usage_table.cpp"},
                        FeedLog,
                        {LogRecord(5, 9, 1000, 10) + LogRecord(5, 10, 0xFFFFFFFF, 0x80000000) + LogRecord(20, 23, 7, 9),
                         LogRecord(0, 0, 1, 1) + LogRecord(32, 24, 1, 1) + LogRecord(-128, -1, 1, 1) + Bytes(7, 5)});

void FeedLogName(Input input) {
    const std::wstring name(input.begin(), input.end());
    LogMonth month;
    if (ParseLogName(name.c_str(), month)) {
        Demand(month.Number() >= 0 && month.Number() <= 999999);
        Demand(name.starts_with(std::wstring(month.year) + month.month));
    }
}

const Fuzzer kLogNames("log_names", {"options/log_months.cpp"}, FeedLogName,
                       {BytesOf("200612.log"), BytesOf("200699.log"), BytesOf("20061.log")});

}  // namespace
