// charts/scale_ladder.h - full scales of the charts' vertical axes and the five labels that go with each.
//
// An axis counts a kilobyte as 1,024 bytes, a megabyte as 1,000 of those and a gigabyte as 1,000 of these, unlike byte
// counts shown as text.
#pragma once

#include <array>
#include <cstdint>

inline constexpr int kAxisLabels = 5;

struct ScaleStep {
    uint32_t fullScale;                              // bytes that fill the axis
    std::array<const wchar_t*, kAxisLabels> labels;  // from 100 % down to 20 %
};

// The first step whose full scale lies above the largest value. Beyond the last one the usage chart stands at 2 GB, the
// live graph at 1 GB with the labels of ">10MB", which leaves its lines one unit high.
const ScaleStep& UsageScale(double maximum);
const ScaleStep& LiveScale(uint32_t maximum);
