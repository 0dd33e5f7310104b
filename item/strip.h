// item/strip.h - the strip on the Today screen: where its parts stand and what the mini graph shows.
#pragma once

#include "item/item_state.h"

#include <array>
#include <span>

struct ToolIcon {
    int x;  // logical pixels, doubled on a high-resolution screen
    int normal;
    int hiRes;
};

// In drawing order; y is 4 on both screens.
inline constexpr std::array<ToolIcon, 9> kToolIcons = {{
    {69, 103, 192},   // usage charts
    {88, 101, 189},   // DHCP details
    {107, 104, 193},  // ping
    {126, 102, 191},  // adapter details
    {145, 125, 201},  // 802.11 scanner
    {164, 126, 202},  // wireless card details
    {183, 188, 190},  // intruder detector
    {202, 106, 195},  // control panel applet 17
    {221, 105, 194},  // control panel applet 19
}};
inline constexpr int kStripIconTop = 4;
inline constexpr int kSignalIconLeft = 50;  // logical; top kStripIconTop on both screens

// The mini graph inside the item surface, in device pixels.
struct GraphGeometry {
    int width;  // of the surface
    int height;
    int baseline;
    int right;       // the newest point
    int background;  // bitmap number
    int backgroundHeight;
    int left;  // of the surface's copy on the strip
    int top;
};
const GraphGeometry& CurrentGraphGeometry();

// The copy of the surface onto the strip is this large on both screens; a normal screen's surface ends before, and the
// platform clips.
inline constexpr int kGraphCopyWidth = 88;
inline constexpr int kGraphCopyHeight = 33;

// Pixels above the baseline for one tick's bytes.
int GraphHeight(uint32_t bytes);

// Height of the strip in pixels: 24, or 40 on a high-resolution screen.
int StripHeight();

// Signal icon for a reading on this screen.
int SignalIconId(int32_t dbm);

// The signal icon to draw now, or 0 for none; updates lastDrawnSignal. A steady lowest band is drawn on every refresh.
int NextSignalIcon(bool fullPaint);

enum class Direction { Received, Transmitted };

// One piece of the graph: a line, or with equal ends a single pixel.
struct GraphMark {
    Direction direction;
    POINT from;
    POINT to;
};
inline constexpr size_t kMostGraphMarks = size_t{2} * kSampleSlots;

// Arranges the rings of itemState as marks in drawing order (received before transmitted); pieces that lie on the
// baseline are left out. Returns how many marks were filled.
size_t ArrangeMiniGraph(std::span<GraphMark, kMostGraphMarks> marks);
