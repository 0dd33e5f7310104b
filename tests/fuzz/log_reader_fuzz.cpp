// A month's log of any bytes, through everything that reads it (series, chart, table, export) and through the writer.

#include <algorithm>

#include "charts/usage_chart.h"
#include "charts/usage_table.h"
#include "item/item_state.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/support/traffic_logs.h"
#include "trafficlog/export_writer.h"
#include "trafficlog/log_file.h"

namespace {

constexpr wchar_t kLog[] = L"200612.log";

void ReadAndArrange(UsageMode mode) {
    UsageView view = InitialUsageView();
    view.date = {2006, 12, 5};
    view.mode = mode;
    ReadUsage(view);
    for (int slot = 0; slot < kSeriesSlots; ++slot) {
        Demand(view.series.transmitted[slot] <= view.series.maximum || mode == UsageMode::Hourly);
        Demand(view.series.received[slot] >= 0);
    }
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

// A tick changes one record, or appends one, and nothing else.
void AddTick(const Bytes& before) {
    LogTrafficAt({2006, 12, 0, 5, 10, 0, 0, 0}, 3, 4);
    Bytes after = ReadWholeFile(kLog);
    Demand(after.size() == before.size() || after.size() == before.size() + sizeof(TrafficLogRecord));
    Demand(after != before);
    const auto first = std::mismatch(before.begin(), before.end(), after.begin()).first - before.begin();
    const size_t record = static_cast<size_t>(first) / sizeof(TrafficLogRecord) * sizeof(TrafficLogRecord);
    for (size_t i = 0; i < before.size(); ++i) {
        Demand(after[i] == before[i] || (i >= record + 4 && i < record + sizeof(TrafficLogRecord)));
    }
}

void UseLog(std::span<const uint8_t> input) {
    const Bytes log(input.begin(), input.end());
    WriteWholeFile(kLog, log);
    ReadAndArrange(UsageMode::Daily);
    ReadAndArrange(UsageMode::Hourly);
    Demand(ExportTraffic(DataPath(L"out.csv").c_str(), {{2006, 12, 3}, {2006, 12, 20}}));
    const Bytes csv = ReadWholeFile(L"out.csv");
    Demand(!csv.empty() && csv.back() == '\n');
    AddTick(log);
}

std::vector<Bytes> Logs() {
    const Bytes sound = LogRecord(5, 9, 1000, 10) + LogRecord(5, 10, 0xFFFFFFFF, 0x80000000) + LogRecord(20, 23, 7, 9);
    Bytes damaged = LogRecord(0, 0, 1, 1) + LogRecord(32, 24, 1, 1) + LogRecord(-128, -1, 1, 1);
    damaged.resize(damaged.size() - 5);
    return {sound, damaged};
}

const RegisteredFuzzer kFuzzer({"log_reader",
                                {"trafficlog/log_reader.cpp", "trafficlog/log_file.cpp", "trafficlog/export_writer.cpp",
                                 "charts/usage_chart.cpp", "charts/usage_table.cpp"},
                                UseLog,
                                Logs});

}  // namespace
