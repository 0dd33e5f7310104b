// What one tick costs with a full month's file (744 records), and its file work alone.

#include <benchmark/benchmark.h>

#include "item/item_state.h"
#include "item/tick.h"
#include "tests/fakes/fakes.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/data_folder.h"
#include "trafficlog/log_file.h"

namespace {

constexpr SYSTEMTIME kLastHour = {2006, 12, 0, 31, 23, 0, 0, 0};

void UseMonthOf(int64_t records) {
    fakes::ResetSystem();
    fakes::SetLocalTime(kLastHour);
    scripted::Reset();
    ResetItemState();
    UseEmptyDataFolder();
    Bytes month(static_cast<size_t>(records) * sizeof(TrafficLogRecord));
    for (size_t i = 0; i < static_cast<size_t>(records); ++i) {
        // Ends with the current hour, so that the search runs to the last record.
        const size_t hour = 744 - static_cast<size_t>(records) + i;
        month[i * 12] = static_cast<uint8_t>(hour / 24 + 1);
        month[i * 12 + 1] = static_cast<uint8_t>(hour % 24);
    }
    WriteWholeFile(L"200612.log", month);
}

void LogTrafficInMonth(benchmark::State& state) {
    UseMonthOf(state.range(0));
    for (auto _ : state) {
        LogTrafficAt(kLastHour, 1, 1);
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
