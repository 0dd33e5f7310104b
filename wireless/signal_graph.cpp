// Arranges the last readings; two pixels per dBm.

#include "wireless/signal_graph.h"

#include "wireless/signal_level.h"

#include <algorithm>

size_t ArrangeSignalGraph(std::span<const int32_t, kSignalReadings> history,
                          std::span<SignalLine, kSignalReadings> lines) {
    constexpr int kFirstX = 45;
    constexpr int kSpacing = 3;
    constexpr int kBottom = 68;
    constexpr int32_t kWeakest = -90;
    constexpr int32_t kMostSteps = 32;
    size_t count = 0;
    for (size_t i = 0; i < history.size(); ++i) {
        if (history[i] <= kWeakest) {
            continue;
        }
        // Compared before adding: a driver may report any number.
        const int32_t steps = std::min(history[i], kWeakest + kMostSteps) - kWeakest;
        lines[count++] = {kFirstX + kSpacing * static_cast<int>(i), kBottom, (34 - steps) * 2};
    }
    return count;
}

const wchar_t* SignalStatus(int32_t dbm) {
    constexpr const wchar_t* kStatuses[kSignalLevels] = {L"No Signal", L"Very Low", L"Low", L"Good", L"Very Good"};
    return kStatuses[static_cast<int>(SignalLevelOf(dbm))];
}
