// Which of the forty taskbar icons fits the newest tick, and where it goes.

#include "item/taskbar_icon.h"

#include "item/item_state.h"
#include "wireless/signal_level.h"

namespace {

// Icons of the five signal levels, lowest first.
struct IconRow {
    int icons[kSignalLevels];
};

// Indexed by the traffic state: 0 idle, 1 receiving, 2 sending, 3 both.
constexpr IconRow kNormalIcons[] = {
    {{238, 239, 240, 241, 242}}, {{243, 244, 245, 246, 247}}, {{248, 249, 250, 251, 252}}, {{233, 234, 235, 236, 237}}};
constexpr IconRow kHiResIcons[] = {
    {{218, 219, 220, 221, 222}}, {{223, 224, 225, 226, 227}}, {{228, 229, 230, 231, 232}}, {{212, 213, 214, 216, 217}}};

}  // namespace

int TaskbarIconId() {
    const int newest = itemState.ringIndex;
    const int receiving = newest >= 0 && itemState.inDeltas[newest] != 0 ? 1 : 0;
    const int sending = newest >= 0 && itemState.outDeltas[newest] != 0 ? 2 : 0;
    const IconRow& row = (IsHiResScreen() ? kHiResIcons : kNormalIcons)[sending + receiving];
    return row.icons[static_cast<int>(SignalLevelOf(itemState.SignalDbm))];
}

int TaskbarIconSide() {
    constexpr int kSide = 16;
    return kSide * ScreenScale();
}

int TaskbarIconTop() {
    constexpr int kTop = 5;
    return kTop * ScreenScale();
}
