// Every step of both ladders, at its first and last value.

#include "charts/scale_ladder.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/format_text.h"

namespace {

std::wstring Labels(const ScaleStep& step) {
    std::wstring labels;
    for (const wchar_t* label : step.labels) {
        labels += std::wstring(label) + L" ";
    }
    return labels;
}

// The full scales, each the first value of the next step; "K" and "M" count as the axis does.
constexpr uint32_t K = 1024, M = 1024000;
constexpr uint32_t kUsage[] = {K,       10 * K,  50 * K,  100 * K, 200 * K,  300 * K, 400 * K, 500 * K, 600 * K,
                               700 * K, 800 * K, 900 * K, M,       2 * M,    3 * M,   4 * M,   5 * M,   6 * M,
                               7 * M,   8 * M,   9 * M,   10 * M,  20 * M,   30 * M,  40 * M,  50 * M,  60 * M,
                               70 * M,  80 * M,  90 * M,  100 * M, 1000 * M, 2000 * M};
constexpr uint32_t kLive[] = {K,       10 * K,  100 * K, 200 * K, 300 * K, 400 * K, 500 * K, 600 * K,
                              700 * K, 800 * K, 900 * K, M,       2 * M,   3 * M,   4 * M,   5 * M,
                              6 * M,   7 * M,   8 * M,   9 * M,   10 * M,  1000 * M};

// Five levels in the unit of the first; decimals below 10, except on the scale of 5.
std::wstring ExpectedLabels(uint32_t full) {
    const wchar_t* unit = full < M ? L"KB" : full < 1000 * M ? L"MB" : L"GB";
    const uint32_t number = full / (full < M ? K : full < 1000 * M ? M : 1000 * M);
    std::wstring labels;
    for (uint32_t level = 5; level > 0; --level) {
        wchar_t text[16];
        if (number < 10 && number != 5) {
            FormatText(text, L"%.1f%s ", number * level / 5.0, unit);
        } else {
            FormatText(text, L"%d%s ", number * level / 5, unit);
        }
        labels += text;
    }
    return labels;
}

template <class Value, size_t Steps>
void ExpectSteps(const uint32_t (&steps)[Steps], const ScaleStep& (*scale)(Value), double before) {
    uint32_t from = 0;
    for (const uint32_t full : steps) {
        for (const double value : {static_cast<double>(from), full - before}) {
            EXPECT_EQ(scale(static_cast<Value>(value)).fullScale, full) << value;
        }
        if (full != steps[Steps - 1]) {
            EXPECT_EQ(Labels(scale(static_cast<Value>(from))), ExpectedLabels(full));
        }
        from = full;
    }
}

TEST(ScaleLadder, Steps_start_at_their_bound) {
    ExpectSteps(kUsage, UsageScale, 1.0 / 1024);
    EXPECT_EQ(Labels(UsageScale(6e12)), L">2GB 1.6GB 1.2GB 0.8GB 0.4GB ");
    ExpectSteps(kLive, LiveScale, 1);
    EXPECT_EQ(Labels(LiveScale(0xFFFFFFFF)), L">10MB 8MB 6MB 4MB 2MB ");
    EXPECT_EQ(LiveScale(0xFFFFFFFF).fullScale, 1000 * M);
}

}  // namespace
