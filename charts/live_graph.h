// charts/live_graph.h - the last twenty ticks of itemState arranged as the live graph's off-screen picture.
#pragma once

#include "charts/chart_marks.h"
#include "charts/scale_ladder.h"
#include "item/item_state.h"

struct LiveGraph {
    std::array<ChartText, kAxisLabels> labels;     // right-aligned
    std::array<ChartBar, 2 * kSampleSlots> lines;  // in drawing order
    int lineCount;
};

// Logical size of the picture and its place in the dialog.
inline constexpr int kLiveGraphWidth = 210;
inline constexpr int kLiveGraphHeight = 120;
inline constexpr int kLiveGraphLeft = 4;
inline constexpr int kLiveGraphTop = 16;

// The background, stretched in the picture.
ChartImage LiveGraphBackground();

// False when there is no sample yet: the picture is then the background alone.
bool ArrangeLiveGraph(LiveGraph& graph);
