// A month's log of any bytes, through everything that reads it: series, chart, table and export.

#include "charts/usage_chart.h"
#include "charts/usage_table.h"
#include "item/item_state.h"
#include "tests/fakes/fakes.h"
#include "tests/support/data_folder.h"
#include "trafficlog/export_writer.h"

#include <cstdlib>

namespace {

void Demand(bool holds) {
    if (!holds) {
        std::abort();
    }
}

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

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const bool ready = [] {
        fakes::ResetSystem();
        ResetItemState();
        RefreshScreenSize();
        UseEmptyDataFolder();
        return true;
    }();
    (void)ready;
    WriteWholeFile(L"200612.log", Bytes(data, data + size));
    ReadAndArrange(UsageMode::Daily);
    ReadAndArrange(UsageMode::Hourly);
    Demand(ExportTraffic(DataPath(L"out.csv").c_str(), {{2006, 12, 3}, {2006, 12, 20}}));
    const Bytes csv = ReadWholeFile(L"out.csv");
    Demand(!csv.empty() && csv.back() == '\n');
    return 0;
}
