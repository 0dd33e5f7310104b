// tests/support/usage_views.h - usage views as the tests of state and arrangement need them.
#pragma once

#include "charts/usage_view.h"
#include "item/item_state.h"

inline constexpr SIZE kPortrait = {240, 320};
inline constexpr SIZE kLandscape = {320, 240};
inline constexpr SIZE kHiResPortrait = {480, 640};
inline constexpr SIZE kHiResSquare = {480, 480};

inline void UseScreen(SIZE screen) {
    itemState.screenWidth = screen.cx;
    itemState.screenHeight = screen.cy;
}

inline UsageView ViewOf(UsageMode mode) {
    UsageView view = InitialUsageView();
    view.date = {2006, 12, 5};
    view.mode = mode;
    view.slotCount = mode == UsageMode::Hourly ? 24 : 31;
    return view;
}

inline UsageView ViewWithRows(int rows, UsageStyle style) {
    UsageView view = ViewOf(UsageMode::Daily);
    view.style = style;
    view.rowsWithData = rows;
    for (int day = 1; day <= rows; ++day) {
        view.series.received[day] = 1024.0 * day;
    }
    return view;
}
