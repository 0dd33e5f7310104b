// The history's costs: reading a month as a view, and exporting ten years of full months beside reading the same files.

#include <benchmark/benchmark.h>

#include "item/item_state.h"
#include "platform/scoped.h"
#include "tests/fakes/fakes.h"
#include "tests/support/traffic_logs.h"
#include "trafficlog/export_writer.h"
#include "trafficlog/log_reader.h"

namespace {

constexpr int kFirstYear = 1997;
constexpr int kYears = 10;

void WriteTenYears() {
    fakes::ResetSystem();
    ResetItemState();
    UseEmptyDataFolder();
    for (int index = 0; index < kYears * 12; ++index) {
        const int year = kFirstYear + index / 12;
        WriteLog(year, index % 12 + 1, FullMonth(year, index % 12 + 1, 123456789, 98765432));
    }
}

void ReadMonth(benchmark::State& state) {
    WriteTenYears();
    const auto mode = static_cast<UsageMode>(state.range(0));
    TrafficSeries series;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ReadTrafficLog(mode, {kFirstYear, 1, 5}, series));
    }
}
BENCHMARK(ReadMonth)->ArgName("hourly")->Arg(0)->Arg(1);

void ReadTenYears(benchmark::State& state) {
    WriteTenYears();
    for (auto _ : state) {
        for (int index = 0; index < kYears * 12; ++index) {
            const platform::ScopedHandle file(OpenTrafficLog(kFirstYear + index / 12, index % 12 + 1));
            constexpr size_t kRecordsPerMonth = 31 * 24;
            uint8_t content[kRecordsPerMonth * sizeof(TrafficLogRecord) + 1];
            DWORD read = 0;
            ReadFile(file.handle, content, sizeof(content), &read, nullptr);
            benchmark::DoNotOptimize(content);
        }
    }
}
BENCHMARK(ReadTenYears)->Unit(benchmark::kMillisecond);

void ExportTenYears(benchmark::State& state) {
    WriteTenYears();
    const std::wstring path = DataPath(L"out.csv");
    for (auto _ : state) {
        ExportTraffic(path.c_str(), {{kFirstYear, 1, 1}, {kFirstYear + kYears - 1, 12, 31}});
    }
}
BENCHMARK(ExportTenYears)->Unit(benchmark::kMillisecond);

}  // namespace
