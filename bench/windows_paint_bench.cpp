// What painting costs, at both scales: the strip as the host's refresh draws it and whole, with full rings; the usage
// dialog with the fullest month, where reading the log comes before painting chart or table. Medians in microseconds.

#include "bench/logged_months.h"
#include "bench/median_time.h"
#include "charts/usage_paint.h"
#include "item/strip_paint.h"

namespace {

constexpr size_t kRuns = 501;

struct MeasuredScreen {
    SIZE size;
    const char* strip;
    const char* wholeStrip;
    const char* reading;
    const char* chart;
    const char* table;
};
constexpr MeasuredScreen kScreens[] = {
    {{240, 320}, "strip", "whole strip", "usage read", "usage chart", "usage table"},
    {{480, 640},
     "strip doubled",
     "whole strip doubled",
     "usage read doubled",
     "usage chart doubled",
     "usage table doubled"},
};

void FillRings() {
    itemState.sampleCount = kSampleSlots;
    itemState.ringStart = 0;
    itemState.ringIndex = kSampleSlots - 1;
    for (uint32_t i = 0; i < kSampleSlots; ++i) {
        itemState.inDeltas[i] = i * 100000;
        itemState.outDeltas[i] = (kSampleSlots - i) * 70000;
    }
}

void PrintPainting(const char* name, const std::function<void()>& paint) {
    PrintMedian(name, kRuns, [&] {
        paint();
        GdiFlush();
    });
}

void MeasureStrip(HWND window, HDC context, const MeasuredScreen& screen) {
    CreateDrawingResources(window);
    PrintPainting(screen.strip, [=] { DrawStatusStrip(context, false); });
    PrintPainting(screen.wholeStrip, [=] { DrawItem(context, true); });
    DeleteDrawingResources();
}

void MeasureUsage(HWND window, HDC context, const MeasuredScreen& screen) {
    UsageView view = InitialUsageView();
    view.date = {2006, 12, 5};
    PrintMedian(screen.reading, kRuns, [&] { ReadUsage(view); });
    CreatePens();
    view.style = UsageStyle::Chart;
    PrintPainting(screen.chart, [&] { PaintUsage(window, context, view); });
    view.style = UsageStyle::Table;
    PrintPainting(screen.table, [&] { PaintUsage(window, context, view); });
}

void MeasureAt(HWND window, const MeasuredScreen& screen) {
    itemState.screenWidth = screen.size.cx;
    itemState.screenHeight = screen.size.cy;
    HDC context = GetDC(window);
    MeasureStrip(window, context, screen);
    MeasureUsage(window, context, screen);
    ReleaseDC(window, context);
}

}  // namespace

int main() {
    ResetItemState();
    itemState.instance = GetModuleHandleW(nullptr);
    UseEmptyDataFolder();
    WriteLog(2006, 12, FullMonth(2006, 12, 123456789, 98765432));
    FillRings();
    HWND window = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP | WS_VISIBLE, 0, 0, 480, 640, nullptr, nullptr,
                                  itemState.instance, nullptr);
    for (const MeasuredScreen& screen : kScreens) {
        MeasureAt(window, screen);
    }
    DestroyWindow(window);
    return 0;
}
