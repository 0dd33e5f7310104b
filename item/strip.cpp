// The strip's rules: heights, places, and the order of the mini graph's marks. No device context here.

#include "item/strip.h"

#include "item/item_state.h"
#include "wireless/signal_level.h"

namespace {

constexpr GraphGeometry kNormalGraph = {44, 22, 20, 41, 113, 22, 3, 1};
constexpr GraphGeometry kHiResGraph = {88, 44, 31, 85, 203, 33, 3, 3};
constexpr int kPointSpacing = 2;

constexpr int kNormalSignalIcons[kSignalLevels] = {159, 160, 161, 162, 163};
constexpr int kHiResSignalIcons[kSignalLevels] = {196, 197, 198, 199, 200};

int NormalGraphHeight(uint32_t bytes) {
    if (bytes == 0) {
        return 0;
    }
    if (bytes < 1000) {
        return 1;
    }
    if (bytes < 10000) {
        return static_cast<int>(bytes / 2000) + 2;
    }
    if (bytes < 100000) {
        return static_cast<int>(bytes / 20000) + 7;
    }
    if (bytes < 500000) {
        return static_cast<int>(bytes / 100000) + 12;
    }
    return bytes < 800000 ? 17 : 18;
}

// Index of the k-th oldest sample.
int OldestFirst(int k) {
    const bool full = itemState.sampleCount == kSampleSlots;
    return full ? (itemState.ringStart + k) % kSampleSlots : k;
}

struct MarkList {
    std::span<GraphMark, kMostGraphMarks> marks;
    size_t count = 0;

    void AddLine(Direction direction, int x, int previousHeight, int height) {
        if (previousHeight == 0 && height == 0) {
            return;
        }
        const int baseline = CurrentGraphGeometry().baseline;
        marks[count++] = {direction, {x - kPointSpacing, baseline - previousHeight}, {x, baseline - height}};
    }

    void AddPixel(Direction direction, int x, int height) {
        if (height == 0) {
            return;
        }
        const POINT point = {x, CurrentGraphGeometry().baseline - height};
        marks[count++] = {direction, point, point};
    }
};

}  // namespace

const GraphGeometry& CurrentGraphGeometry() {
    return IsHiResScreen() ? kHiResGraph : kNormalGraph;
}

int GraphHeight(uint32_t bytes) {
    const int height = NormalGraphHeight(bytes);
    return IsHiResScreen() ? height + height / 2 : height;
}

int StripHeight() {
    return IsHiResScreen() ? 40 : 24;
}

int SignalIconId(int32_t dbm) {
    const auto level = static_cast<size_t>(SignalLevelOf(dbm));
    return (IsHiResScreen() ? kHiResSignalIcons : kNormalSignalIcons)[level];
}

int NextSignalIcon(bool fullPaint) {
    constexpr int32_t kStrongestNone = -90;
    if (fullPaint || itemState.SignalDbm != itemState.lastDrawnSignal) {
        itemState.lastDrawnSignal = itemState.SignalDbm;
        return SignalIconId(itemState.SignalDbm);
    }
    if (itemState.lastDrawnSignal <= kStrongestNone) {
        itemState.lastDrawnSignal = kStrongestNone;
        return SignalIconId(kStrongestNone);
    }
    return 0;
}

size_t ArrangeMiniGraph(std::span<GraphMark, kMostGraphMarks> marks) {
    MarkList list{marks};
    const int count = itemState.sampleCount;
    const int right = CurrentGraphGeometry().right;
    if (count == 1) {
        list.AddPixel(Direction::Received, right, GraphHeight(itemState.inDeltas[0]));
        list.AddPixel(Direction::Transmitted, right, GraphHeight(itemState.outDeltas[0]));
    }
    for (int k = 1; k < count; ++k) {
        const int x = right + kPointSpacing * (k - count + 1);
        const int previous = OldestFirst(k - 1);
        const int entry = OldestFirst(k);
        list.AddLine(Direction::Received, x, GraphHeight(itemState.inDeltas[previous]),
                     GraphHeight(itemState.inDeltas[entry]));
        list.AddLine(Direction::Transmitted, x, GraphHeight(itemState.outDeltas[previous]),
                     GraphHeight(itemState.outDeltas[entry]));
    }
    return list.count;
}
