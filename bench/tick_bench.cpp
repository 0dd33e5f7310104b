// What one tick costs with a full month's file (744 records), and its file work alone.

#include <benchmark/benchmark.h>

#include "bench/logged_months.h"
#include "item/tick.h"
#include "tests/fakes/fakes.h"
#include "tests/fakes/scripted_platform.h"

namespace {

void UseMonthOf(int64_t records) {
    fakes::ResetSystem();
    fakes::SetLocalTime(kLastHour);
    scripted::Reset();
    ResetItemState();
    UseEmptyDataFolder();
    WriteMonthOf(static_cast<size_t>(records), kLastHour);
}

void LogTrafficInMonth(benchmark::State& state) {
    UseMonthOf(state.range(0));
    for (auto _ : state) {
        LogTraffic(nullptr, 1, 1);
    }
}
BENCHMARK(LogTrafficInMonth)->Arg(1)->Arg(372)->Arg(744);

void WholeTick(benchmark::State& state) {
    UseMonthOf(state.range(0));
    scripted::system.adapters.emplace_back();
    for (auto _ : state) {
        scripted::system.adapters.front().received += 100;
        RunTick(nullptr);
    }
}
BENCHMARK(WholeTick)->Arg(744);

}  // namespace
