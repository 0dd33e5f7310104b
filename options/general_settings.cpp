// The tick and the charts read the state; the registry keeps it for the next start.

#include "options/general_settings.h"

#include "item/item_state.h"
#include "item/settings.h"

#include <algorithm>

XLocationChoice ReadXLocation(const wchar_t* text) {
    constexpr int kDecimal = 10;
    const long number = wcstol(text, nullptr, kDecimal);
    const bool differs = number != static_cast<long>(itemState.xLocation);
    return {static_cast<uint32_t>(std::clamp<long>(number, 0, kLargestXLocation)), differs};
}

void SaveXLocation(uint32_t place) {
    itemState.xLocation = place;
    WriteNumberSetting(L"XLocation", place);
}

void SaveShowTaskbarIcon(bool show) {
    if (show != itemState.showTaskbarIcon) {
        itemState.showTaskbarIcon = show;
        WriteNumberSetting(L"TIcon", show ? 1 : 0);
    }
}

void SaveHourFormat(bool amPm) {
    if (amPm != itemState.amPmFormat) {
        itemState.amPmFormat = amPm;
        WriteNumberSetting(L"TFormat", amPm ? 1 : 0);
    }
}
