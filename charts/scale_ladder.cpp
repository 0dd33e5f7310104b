// One table serves both graphs; its irregular labels ("5MB" among "4.0MB" and "6.0MB") are meant as they stand.

#include "charts/scale_ladder.h"

namespace {

constexpr std::array<ScaleStep, 32> kSteps = {{
    {1'024, {L"1.0KB", L"0.8KB", L"0.6KB", L"0.4KB", L"0.2KB"}},
    {10'240, {L"10KB", L"8KB", L"6KB", L"4KB", L"2KB"}},
    {51'200, {L"50KB", L"40KB", L"30KB", L"20KB", L"10KB"}},
    {102'400, {L"100KB", L"80KB", L"60KB", L"40KB", L"20KB"}},
    {204'800, {L"200KB", L"160KB", L"120KB", L"80KB", L"40KB"}},
    {307'200, {L"300KB", L"240KB", L"180KB", L"120KB", L"60KB"}},
    {409'600, {L"400KB", L"320KB", L"240KB", L"160KB", L"80KB"}},
    {512'000, {L"500KB", L"400KB", L"300KB", L"200KB", L"100KB"}},
    {614'400, {L"600KB", L"480KB", L"360KB", L"240KB", L"120KB"}},
    {716'800, {L"700KB", L"560KB", L"420KB", L"280KB", L"140KB"}},
    {819'200, {L"800KB", L"640KB", L"480KB", L"320KB", L"160KB"}},
    {921'600, {L"900KB", L"720KB", L"540KB", L"360KB", L"180KB"}},
    {1'024'000, {L"1.0MB", L"0.8MB", L"0.6MB", L"0.4MB", L"0.2MB"}},
    {2'048'000, {L"2.0MB", L"1.6MB", L"1.2MB", L"0.8MB", L"0.4MB"}},
    {3'072'000, {L"3.0MB", L"2.4MB", L"1.8MB", L"1.2MB", L"0.6MB"}},
    {4'096'000, {L"4.0MB", L"3.2MB", L"2.4MB", L"1.6MB", L"0.8MB"}},
    {5'120'000, {L"5MB", L"4MB", L"3MB", L"2MB", L"1MB"}},
    {6'144'000, {L"6.0MB", L"4.8MB", L"3.6MB", L"2.4MB", L"1.2MB"}},
    {7'168'000, {L"7.0MB", L"5.6MB", L"4.2MB", L"2.8MB", L"1.4MB"}},
    {8'192'000, {L"8.0MB", L"6.4MB", L"4.8MB", L"3.2MB", L"1.6MB"}},
    {9'216'000, {L"9.0MB", L"7.2MB", L"5.4MB", L"3.6MB", L"1.8MB"}},
    {10'240'000, {L"10MB", L"8MB", L"6MB", L"4MB", L"2MB"}},
    {20'480'000, {L"20MB", L"16MB", L"12MB", L"8MB", L"4MB"}},
    {30'720'000, {L"30MB", L"24MB", L"18MB", L"12MB", L"6MB"}},
    {40'960'000, {L"40MB", L"32MB", L"24MB", L"16MB", L"8MB"}},
    {51'200'000, {L"50MB", L"40MB", L"30MB", L"20MB", L"10MB"}},
    {61'440'000, {L"60MB", L"48MB", L"36MB", L"24MB", L"12MB"}},
    {71'680'000, {L"70MB", L"56MB", L"42MB", L"28MB", L"14MB"}},
    {81'920'000, {L"80MB", L"64MB", L"48MB", L"32MB", L"16MB"}},
    {92'160'000, {L"90MB", L"72MB", L"54MB", L"36MB", L"18MB"}},
    {102'400'000, {L"100MB", L"80MB", L"60MB", L"40MB", L"20MB"}},
    {1'024'000'000, {L"1.0GB", L"0.8GB", L"0.6GB", L"0.4GB", L"0.2GB"}},
}};
constexpr ScaleStep kBeyondUsage = {2'048'000'000, {L">2GB", L"1.6GB", L"1.2GB", L"0.8GB", L"0.4GB"}};

// The live graph goes from 10 KB straight to 100 KB and ends at 10 MB.
constexpr uint32_t kStepWithoutLive = 51'200;
constexpr uint32_t kLastLiveStep = 10'240'000;
constexpr ScaleStep kBeyondLive = {1'024'000'000, {L">10MB", L"8MB", L"6MB", L"4MB", L"2MB"}};

}  // namespace

const ScaleStep& UsageScale(double maximum) {
    for (const ScaleStep& step : kSteps) {
        if (maximum < step.fullScale) {
            return step;
        }
    }
    return kBeyondUsage;
}

const ScaleStep& LiveScale(uint32_t maximum) {
    for (const ScaleStep& step : kSteps) {
        if (step.fullScale > kLastLiveStep) {
            break;
        }
        if (maximum < step.fullScale && step.fullScale != kStepWithoutLive) {
            return step;
        }
    }
    return kBeyondLive;
}
