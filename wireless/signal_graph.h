// wireless/signal_graph.h - the lines of the signal view's graph.
#pragma once

#include "item/item_state.h"

#include <span>

inline constexpr int kSignalGraphWidth = 168;
inline constexpr int kSignalGraphHeight = 72;

// A vertical line inside the graph, from its bottom up.
struct SignalLine {
    int x;
    int bottom;
    int top;
};

// One line per reading above -90 dBm, oldest at the left; readings of -58 dBm and more reach the top. Returns how many.
size_t ArrangeSignalGraph(std::span<const int32_t, kSignalReadings> history,
                          std::span<SignalLine, kSignalReadings> lines);

// "No Signal" to "Very Good".
const wchar_t* SignalStatus(int32_t dbm);
