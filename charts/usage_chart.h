// charts/usage_chart.h - the usage view arranged as a bar chart.
#pragma once

#include "charts/chart_marks.h"
#include "charts/scale_ladder.h"
#include "charts/usage_view.h"

struct UsageChart {
    ChartImage background;
    std::array<ChartText, kAxisLabels> labels;    // right-aligned
    std::array<ChartBar, 2 * kSeriesSlots> bars;  // in drawing order, each three pixels wide from its x on
    int barCount;
};

inline constexpr int kUsageBarWidth = 3;  // device pixels on every screen

void ArrangeUsageChart(const UsageView& view, UsageChart& chart);
