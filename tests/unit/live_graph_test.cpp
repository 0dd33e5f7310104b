// The live graph's lines for rings in every state.
#include "charts/live_graph.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// The uppermost label, then direction, place and height of each line.
std::wstring Lines() {
    LiveGraph graph;
    if (!ArrangeLiveGraph(graph)) {
        return L"none";
    }
    std::wstring lines = std::wstring(graph.labels[0].text) + L" ";
    for (int i = 0; i < graph.lineCount; ++i) {
        const ChartBar& line = graph.lines[i];
        EXPECT_EQ(line.foot, 114 * ScreenScale());
        lines += (line.traffic == Traffic::Transmitted ? L"T" : L"R") + std::to_wstring(line.x) + L":" +
                 std::to_wstring(line.foot - line.top) + L" ";
    }
    return lines;
}

TEST(LiveGraph, Heights_are_cut_percentages_of_the_scale) {
    EXPECT_EQ(Lines(), L"none") << "without samples";
    const std::tuple<uint32_t, uint32_t, const wchar_t*> rows[] = {
        {0, 0, L"1.0KB "},
        {0, 512, L"1.0KB R168:50 "},
        {1023, 10, L"1.0KB T168:99 "},
        {1023, 11, L"1.0KB T168:99 R168:1 "},
        {1024, 102, L"10KB T168:10 "},
        {1024, 103, L"10KB T168:10 R168:1 "},
        {300, 700, L"1.0KB R168:68 T168:29 "},
        {700, 700, L"1.0KB T168:68 R168:68 "},
        {10239999, 1, L"10MB T168:99 "},
        {12000000, 10240000, L">10MB T168:1 R168:1 "},
        {42949672, 1, L">10MB T168:4 "},
        {42949673, 42949672, L">10MB R168:4 "},  // the first product wraps to 4: drawn first, but with no height
        {0xFFFFFFFF, 85899346, L">10MB T168:4 "},
    };
    for (const auto& [transmitted, received, lines] : rows) {
        itemState.sampleCount = 1;
        itemState.ringIndex = 0;
        itemState.outDeltas[0] = transmitted;
        itemState.inDeltas[0] = received;
        EXPECT_EQ(Lines(), lines) << transmitted;
    }
}

TEST(LiveGraph, The_newest_sample_stands_at_the_right) {
    itemState.sampleCount = 3;
    itemState.ringIndex = 2;
    std::copy_n(std::array{103, 206, 309}.begin(), 3, itemState.outDeltas);
    itemState.inDeltas[7] = 5000000;  // not a sample
    EXPECT_EQ(Lines(), L"1.0KB T154:10 T161:20 T168:30 ");
    itemState.screenWidth = 480;
    EXPECT_EQ(Lines(), L"1.0KB T308:20 T322:40 T336:60 ");
}

TEST(LiveGraph, A_full_ring_is_walked_from_its_oldest_sample) {
    for (const int start : {0, 7, 19}) {
        itemState.sampleCount = kSampleSlots;
        itemState.ringStart = start;
        itemState.ringIndex = (start + kSampleSlots - 1) % kSampleSlots;
        std::wstring expected = L"1.0KB ";
        for (int age = 0; age < kSampleSlots; ++age) {
            itemState.inDeltas[(start + age) % kSampleSlots] = static_cast<uint32_t>((20 + age) * 1024 / 100 + 1);
            expected += L"R" + std::to_wstring(35 + 7 * age) + L":" + std::to_wstring(20 + age) + L" ";
        }
        EXPECT_EQ(Lines(), expected) << start;
    }
}

}  // namespace
