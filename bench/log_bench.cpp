// The history's costs: reading a month as a view, and exporting ten years of full months beside reading the same files.

#include <benchmark/benchmark.h>

#include "bench/logged_months.h"
#include "tests/fakes/fakes.h"
#include "trafficlog/log_reader.h"

namespace {

void UseTenYears() {
    fakes::ResetSystem();
    ResetItemState();
    UseEmptyDataFolder();
    WriteTenYears();
}

void ReadMonth(benchmark::State& state) {
    UseTenYears();
    const auto mode = static_cast<UsageMode>(state.range(0));
    TrafficSeries series;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ReadTrafficLog(mode, {kFirstYear, 1, 5}, series));
    }
}
BENCHMARK(ReadMonth)->ArgName("hourly")->Arg(0)->Arg(1);

void ReadAllFiles(benchmark::State& state) {
    UseTenYears();
    for (auto _ : state) {
        benchmark::DoNotOptimize(ReadTenYears());
    }
}
BENCHMARK(ReadAllFiles);

void ExportAllFiles(benchmark::State& state) {
    UseTenYears();
    const std::wstring path = DataPath(L"out.csv");
    for (auto _ : state) {
        ExportTenYears(path);
    }
}
BENCHMARK(ExportAllFiles);

}  // namespace
