// A slot's two bars share one place: the shorter stands in front of the taller.

#include "charts/usage_chart.h"

#include "item/item_state.h"
#include "platform/format_text.h"
#include "resources/resource_ids.h"

#include <algorithm>

namespace {

constexpr int kLeft = 30;  // of the background, logical pixels
constexpr int kTop = 72;
constexpr int kHourSpacing = 7;
constexpr int kDaySpacing = 5;

// Multiplied by the inverse: a division would round some values at whole percentages the other way.
int PercentOf(double value, uint32_t fullScale) {
    const double percentage = value * (1.0 / fullScale) * 100;
    return static_cast<int>(std::clamp(percentage, 0.0, 100.0));
}

int BarLeft(UsageMode mode, int slot) {
    return mode == UsageMode::Hourly ? kLeft + (slot + 1) * kHourSpacing : kLeft + slot * kDaySpacing;
}

void AddBar(UsageChart& chart, Traffic traffic, int left, int percentage) {
    const int scale = ScreenScale();
    const int foot = (scale == 1 ? 121 : 122) + kTop;
    if (percentage > 0) {
        chart.bars[chart.barCount++] = {traffic, left * scale, foot * scale, (foot - percentage) * scale};
    }
}

void AddSlot(UsageChart& chart, int left, int transmitted, int received) {
    if (transmitted < received) {
        AddBar(chart, Traffic::Received, left, received);
        AddBar(chart, Traffic::Transmitted, left, transmitted);
        return;
    }
    AddBar(chart, Traffic::Transmitted, left, transmitted);
    if (received < transmitted) {
        AddBar(chart, Traffic::Received, left, received);
    }
}

void ArrangeLabels(const ScaleStep& step, UsageChart& chart) {
    const int scale = ScreenScale();
    for (int i = 0; i < kAxisLabels; ++i) {
        ChartText& label = chart.labels[i];
        label.area = {2 * scale, (88 + 20 * i) * scale, 29 * scale, (103 + 20 * i) * scale};
        FormatText(label.text, L"%s", step.labels[i]);
    }
}

}  // namespace

void ArrangeUsageChart(const UsageView& view, UsageChart& chart) {
    const int scale = ScreenScale();
    const bool hourly = view.mode == UsageMode::Hourly;
    chart.background = {hourly ? IDB_CHART_HOURLY : IDB_CHART_DAILY, kLeft * scale, kTop * scale, 174 * scale,
                        134 * scale};
    const ScaleStep& step = UsageScale(view.series.maximum);
    ArrangeLabels(step, chart);
    chart.barCount = 0;
    const int first = hourly ? 0 : 1;
    const int last = hourly ? view.slotCount - 1 : view.slotCount;
    for (int slot = first; slot <= last; ++slot) {
        AddSlot(chart, BarLeft(view.mode, slot), PercentOf(view.series.transmitted[slot], step.fullScale),
                PercentOf(view.series.received[slot], step.fullScale));
    }
}
