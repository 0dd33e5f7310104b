// Every step of both ladders, at its first and last value.

#include "charts/scale_ladder.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Row {
    uint32_t from;
    uint32_t fullScale;
    const wchar_t* labels;
};

std::wstring Labels(const ScaleStep& step) {
    std::wstring labels;
    for (const wchar_t* label : step.labels) {
        labels += (labels.empty() ? L"" : L" ") + std::wstring(label);
    }
    return labels;
}

constexpr Row kUsage[] = {
    {0, 1024, L"1.0KB 0.8KB 0.6KB 0.4KB 0.2KB"},
    {1024, 10240, L"10KB 8KB 6KB 4KB 2KB"},
    {10240, 51200, L"50KB 40KB 30KB 20KB 10KB"},
    {51200, 102400, L"100KB 80KB 60KB 40KB 20KB"},
    {102400, 204800, L"200KB 160KB 120KB 80KB 40KB"},
    {204800, 307200, L"300KB 240KB 180KB 120KB 60KB"},
    {307200, 409600, L"400KB 320KB 240KB 160KB 80KB"},
    {409600, 512000, L"500KB 400KB 300KB 200KB 100KB"},
    {512000, 614400, L"600KB 480KB 360KB 240KB 120KB"},
    {614400, 716800, L"700KB 560KB 420KB 280KB 140KB"},
    {716800, 819200, L"800KB 640KB 480KB 320KB 160KB"},
    {819200, 921600, L"900KB 720KB 540KB 360KB 180KB"},
    {921600, 1024000, L"1.0MB 0.8MB 0.6MB 0.4MB 0.2MB"},
    {1024000, 2048000, L"2.0MB 1.6MB 1.2MB 0.8MB 0.4MB"},
    {2048000, 3072000, L"3.0MB 2.4MB 1.8MB 1.2MB 0.6MB"},
    {3072000, 4096000, L"4.0MB 3.2MB 2.4MB 1.6MB 0.8MB"},
    {4096000, 5120000, L"5MB 4MB 3MB 2MB 1MB"},
    {5120000, 6144000, L"6.0MB 4.8MB 3.6MB 2.4MB 1.2MB"},
    {6144000, 7168000, L"7.0MB 5.6MB 4.2MB 2.8MB 1.4MB"},
    {7168000, 8192000, L"8.0MB 6.4MB 4.8MB 3.2MB 1.6MB"},
    {8192000, 9216000, L"9.0MB 7.2MB 5.4MB 3.6MB 1.8MB"},
    {9216000, 10240000, L"10MB 8MB 6MB 4MB 2MB"},
    {10240000, 20480000, L"20MB 16MB 12MB 8MB 4MB"},
    {20480000, 30720000, L"30MB 24MB 18MB 12MB 6MB"},
    {30720000, 40960000, L"40MB 32MB 24MB 16MB 8MB"},
    {40960000, 51200000, L"50MB 40MB 30MB 20MB 10MB"},
    {51200000, 61440000, L"60MB 48MB 36MB 24MB 12MB"},
    {61440000, 71680000, L"70MB 56MB 42MB 28MB 14MB"},
    {71680000, 81920000, L"80MB 64MB 48MB 32MB 16MB"},
    {81920000, 92160000, L"90MB 72MB 54MB 36MB 18MB"},
    {92160000, 102400000, L"100MB 80MB 60MB 40MB 20MB"},
    {102400000, 1024000000, L"1.0GB 0.8GB 0.6GB 0.4GB 0.2GB"},
    {1024000000, 2048000000, L">2GB 1.6GB 1.2GB 0.8GB 0.4GB"},
};

constexpr Row kLive[] = {
    {0, 1024, L"1.0KB 0.8KB 0.6KB 0.4KB 0.2KB"},          {1024, 10240, L"10KB 8KB 6KB 4KB 2KB"},
    {10240, 102400, L"100KB 80KB 60KB 40KB 20KB"},        {102400, 204800, L"200KB 160KB 120KB 80KB 40KB"},
    {204800, 307200, L"300KB 240KB 180KB 120KB 60KB"},    {307200, 409600, L"400KB 320KB 240KB 160KB 80KB"},
    {409600, 512000, L"500KB 400KB 300KB 200KB 100KB"},   {512000, 614400, L"600KB 480KB 360KB 240KB 120KB"},
    {614400, 716800, L"700KB 560KB 420KB 280KB 140KB"},   {716800, 819200, L"800KB 640KB 480KB 320KB 160KB"},
    {819200, 921600, L"900KB 720KB 540KB 360KB 180KB"},   {921600, 1024000, L"1.0MB 0.8MB 0.6MB 0.4MB 0.2MB"},
    {1024000, 2048000, L"2.0MB 1.6MB 1.2MB 0.8MB 0.4MB"}, {2048000, 3072000, L"3.0MB 2.4MB 1.8MB 1.2MB 0.6MB"},
    {3072000, 4096000, L"4.0MB 3.2MB 2.4MB 1.6MB 0.8MB"}, {4096000, 5120000, L"5MB 4MB 3MB 2MB 1MB"},
    {5120000, 6144000, L"6.0MB 4.8MB 3.6MB 2.4MB 1.2MB"}, {6144000, 7168000, L"7.0MB 5.6MB 4.2MB 2.8MB 1.4MB"},
    {7168000, 8192000, L"8.0MB 6.4MB 4.8MB 3.2MB 1.6MB"}, {8192000, 9216000, L"9.0MB 7.2MB 5.4MB 3.6MB 1.8MB"},
    {9216000, 10240000, L"10MB 8MB 6MB 4MB 2MB"},         {10240000, 1024000000, L">10MB 8MB 6MB 4MB 2MB"},
};

TEST(ScaleLadder, Usage_steps_start_at_their_bound) {
    for (const Row& row : kUsage) {
        EXPECT_EQ(UsageScale(row.from).fullScale, row.fullScale);
        EXPECT_EQ(Labels(UsageScale(row.from)), row.labels);
        const double last = row.fullScale - 1.0 / 1024;
        EXPECT_EQ(UsageScale(last).fullScale, row.fullScale);
    }
    EXPECT_EQ(UsageScale(6e12).fullScale, 2048000000);
}

TEST(ScaleLadder, Live_steps_start_at_their_bound) {
    for (const Row& row : kLive) {
        EXPECT_EQ(LiveScale(row.from).fullScale, row.fullScale);
        EXPECT_EQ(Labels(LiveScale(row.from)), row.labels);
        EXPECT_EQ(LiveScale(row.fullScale - 1).fullScale, row.fullScale);
    }
    EXPECT_EQ(LiveScale(0xFFFFFFFF).fullScale, 1024000000);
}

}  // namespace
