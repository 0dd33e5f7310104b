// Exporting ten years of full months beside reading the same files once. Medians in microseconds.

#include "bench/logged_months.h"
#include "bench/median_time.h"

int main() {
    constexpr size_t kRuns = 31;
    ResetItemState();
    UseEmptyDataFolder();
    WriteTenYears();
    PrintMedian("read ten years", kRuns, [] { ReadTenYears(); });
    const std::wstring path = DataPath(L"out.csv");
    PrintMedian("export ten years", kRuns, [&] { ExportTenYears(path); });
    return 0;
}
