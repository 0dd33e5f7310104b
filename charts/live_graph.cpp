// Samples that do not fill the rings yet stand at the right, the newest always in the last column.

#include "charts/live_graph.h"

#include "platform/format_text.h"
#include "resources/resource_ids.h"

#include <algorithm>

namespace {

constexpr int kColumnSpacing = 7;  // logical pixels
constexpr int kNewestColumn = 24;
constexpr int kBaseline = 114;

uint32_t LargestSample() {
    uint32_t largest = 0;
    for (int i = 0; i < itemState.sampleCount; ++i) {
        largest = std::max({largest, itemState.outDeltas[i], itemState.inDeltas[i]});
    }
    return largest;
}

// The multiplication wraps above 42,949,672 bytes, far beyond what the labels tell apart.
int Height(uint32_t bytes, uint32_t fullScale) {
    constexpr uint32_t kHighest = 100;
    return static_cast<int>(std::min(bytes * 100U / fullScale, kHighest));
}

void AddLine(LiveGraph& graph, Traffic traffic, int x, int height) {
    const int scale = ScreenScale();
    if (height > 0) {
        graph.lines[graph.lineCount++] = {traffic, x * scale, kBaseline * scale, (kBaseline - height) * scale};
    }
}

// Samples of a column: the smaller in front, of equal ones the received.
void AddColumn(LiveGraph& graph, int column, int sample, uint32_t fullScale) {
    const uint32_t out = itemState.outDeltas[sample];
    const uint32_t in = itemState.inDeltas[sample];
    const int x = column * kColumnSpacing;
    if (out >= in) {
        AddLine(graph, Traffic::Transmitted, x, Height(out, fullScale));
        AddLine(graph, Traffic::Received, x, Height(in, fullScale));
    } else {
        AddLine(graph, Traffic::Received, x, Height(in, fullScale));
        AddLine(graph, Traffic::Transmitted, x, Height(out, fullScale));
    }
}

void ArrangeLabels(const ScaleStep& step, LiveGraph& graph) {
    const int scale = ScreenScale();
    for (int i = 0; i < kAxisLabels; ++i) {
        ChartText& label = graph.labels[i];
        label.area = {2 * scale, (7 + 20 * i) * scale, 29 * scale, (22 + 20 * i) * scale};
        FormatText(label.text, L"%s", step.labels[i]);
    }
}

}  // namespace

ChartImage LiveGraphBackground() {
    const int scale = ScreenScale();
    return {IDB_LIVE_GRAPH, 30 * scale, 10 * scale, 180 * scale, 108 * scale};
}

bool ArrangeLiveGraph(LiveGraph& graph) {
    const int count = itemState.sampleCount;
    graph.lineCount = 0;
    if (count < 1) {
        return false;
    }
    const ScaleStep& step = LiveScale(LargestSample());
    ArrangeLabels(step, graph);
    const int oldest = count == kSampleSlots ? itemState.ringStart : 0;
    for (int i = 0; i < count; ++i) {
        AddColumn(graph, kNewestColumn - count + 1 + i, (oldest + i) % kSampleSlots, step.fullScale);
    }
    return true;
}
