// bench/median_time.h - the median duration of one piece of work, by the system's performance counter.
#pragma once

#include "platform/system.h"

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

// In microseconds. A median, because a busy machine stretches some of the runs many times over.
inline double MedianMicroseconds(size_t runs, const std::function<void()>& work) {
    LARGE_INTEGER frequency = {};
    QueryPerformanceFrequency(&frequency);
    std::vector<double> times;
    for (size_t i = 0; i < runs; ++i) {
        LARGE_INTEGER before = {};
        LARGE_INTEGER after = {};
        QueryPerformanceCounter(&before);
        work();
        QueryPerformanceCounter(&after);
        times.push_back(static_cast<double>(after.QuadPart - before.QuadPart) * 1e6 /
                        static_cast<double>(frequency.QuadPart));
    }
    std::nth_element(times.begin(), times.begin() + static_cast<ptrdiff_t>(runs / 2), times.end());
    return times[runs / 2];
}

// One line of output: the name, a tabulator, the median.
inline void PrintMedian(const char* name, size_t runs, const std::function<void()>& work) {
    std::printf("%s\t%.1f\n", name, MedianMicroseconds(runs, work));
    std::fflush(stdout);
}
