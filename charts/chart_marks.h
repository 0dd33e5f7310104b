// charts/chart_marks.h - what a chart is arranged into before it is painted; all coordinates are device pixels.
#pragma once

#include "platform/system.h"

enum class Traffic { Transmitted, Received };

// A vertical line (or a bar of lines) from its foot upwards; the row of `top` itself is left out.
struct ChartBar {
    Traffic traffic;
    int x;
    int foot;
    int top;
};

inline constexpr int kChartTextUnits = 16;

struct ChartText {
    RECT area;
    wchar_t text[kChartTextUnits];
};

// A bitmap stretched to an area.
struct ChartImage {
    int bitmap;
    int x;
    int y;
    int width;
    int height;
};
