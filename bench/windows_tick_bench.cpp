// One tick on the real services: its file work with months of three lengths, the question for the adapter's counters,
// and both together as the item's timer runs them. Medians in microseconds.

#include "bench/logged_months.h"
#include "bench/median_time.h"
#include "item/adapter_choice.h"
#include "item/tick.h"

namespace {

constexpr size_t kRuns = 2001;

void UseMonthOf(size_t records) {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    UseEmptyDataFolder();
    WriteMonthOf(records, now);
}

void MeasureFileWork(const char* name, size_t records) {
    UseMonthOf(records);
    PrintMedian(name, kRuns, [] { LogTraffic(nullptr, 1, 1); });
}

}  // namespace

int main() {
    ResetItemState();
    MeasureFileWork("files 1", 1);
    MeasureFileWork("files 372", 372);
    MeasureFileWork("files 744", kRecordsPerMonth);
    if (!ChooseAdapter()) {
        return 0;  // no adapter, no whole tick
    }
    PrintMedian("counters", kRuns, [] { ReadInterfaceCounters(); });
    RunTick(nullptr);
    // A reading that was 100 lower makes an idle adapter one with traffic, which is what has to be logged.
    PrintMedian("whole tick", kRuns, [] {
        itemState.lastInOctets -= 100;
        RunTick(nullptr);
    });
    return 0;
}
