// What a repaint of the usage dialog costs with the fullest month: reading the log, then painting chart and table, at
// both scales. Prints the median of each in microseconds.

#include "charts/usage_paint.h"
#include "item/item_state.h"
#include "item/strip_paint.h"
#include "tests/support/traffic_logs.h"

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

double MedianMicroseconds(const std::function<void()>& work) {
    constexpr size_t kRuns = 301;
    LARGE_INTEGER frequency = {};
    QueryPerformanceFrequency(&frequency);
    std::vector<double> times;
    for (size_t i = 0; i < kRuns; ++i) {
        LARGE_INTEGER before = {};
        LARGE_INTEGER after = {};
        QueryPerformanceCounter(&before);
        work();
        GdiFlush();
        QueryPerformanceCounter(&after);
        times.push_back(static_cast<double>(after.QuadPart - before.QuadPart) * 1e6 /
                        static_cast<double>(frequency.QuadPart));
    }
    std::nth_element(times.begin(), times.begin() + kRuns / 2, times.end());
    return times[kRuns / 2];
}

void MeasureAt(HWND window, SIZE screen) {
    itemState.screenWidth = screen.cx;
    itemState.screenHeight = screen.cy;
    UsageView view = InitialUsageView();
    view.date = {2006, 12, 5};
    const double reading = MedianMicroseconds([&] { ReadUsage(view); });
    HDC context = GetDC(window);
    const auto painting = [&](UsageStyle style) {
        view.style = style;
        return MedianMicroseconds([&] { PaintUsage(window, context, view); });
    };
    const double chart = painting(UsageStyle::Chart);
    const double table = painting(UsageStyle::Table);
    std::printf("%ldx%ld: read %.0f, chart %.0f, table %.0f us\n", static_cast<long>(screen.cx),
                static_cast<long>(screen.cy), reading, chart, table);
    ReleaseDC(window, context);
}

}  // namespace

int main() {
    itemState.instance = GetModuleHandleW(nullptr);
    UseEmptyDataFolder();
    WriteLog(2006, 12, FullMonth(2006, 12, 123456789, 98765432));
    CreatePens();
    HWND window = CreateWindowExW(0, L"STATIC", nullptr, WS_POPUP | WS_VISIBLE, 0, 0, 480, 640, nullptr, nullptr,
                                  itemState.instance, nullptr);
    MeasureAt(window, {240, 320});
    MeasureAt(window, {480, 640});
    DestroyWindow(window);
    return 0;
}
