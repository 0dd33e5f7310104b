// tests/ui/today_frame.h - the Today screen of a UI test: a frame of any size whose client area is the screen. Dialogs
// are driven over it by tests/ui/dialog_script.h.
#pragma once

#include "platform/today.h"

#include "host/picture.h"
#include "tests/ui/dialog_script.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace ui {

inline constexpr SIZE kScreenSizes[] = {{240, 320}, {320, 240}, {480, 640}, {640, 480}, {480, 480}};

inline bool IsHiRes(SIZE screen) {
    return screen.cx > 320 || screen.cy > 320;
}
inline int TaskbarHeightOf(SIZE screen) {
    return IsHiRes(screen) ? 52 : 26;
}
inline bool IsLandscape(SIZE screen) {
    return screen.cx >= screen.cy;
}

// "240x320"
std::string NameOf(SIZE screen);

// A frame with taskbar, alone on the screen; itemState knows its size from the start. It answers a watermark request
// with kWatermark. One at a time.
struct TodayFrame {
    HWND window = nullptr;
    TODAYDRAWWATERMARKINFO watermark = {};  // the last one asked for
    std::string keyboard;                   // '+' for each request to raise the soft keyboard, '-' to lower it

    explicit TodayFrame(SIZE screen);
    TodayFrame(const TodayFrame&) = delete;
    TodayFrame& operator=(const TodayFrame&) = delete;
    ~TodayFrame();
};

inline constexpr COLORREF kWatermark = RGB(200, 224, 240);
inline constexpr COLORREF kTaskbar = RGB(40, 60, 90);

// Runs `body` with a frame of each of kScreenSizes in turn: body(TodayFrame&, SIZE).
template <class Body>
void ForEachScreen(Body body) {
    for (const SIZE screen : kScreenSizes) {
        SCOPED_TRACE(NameOf(screen));
        TodayFrame frame(screen);
        body(frame, screen);
    }
}

// Writes what the screen shows now to NAME-WIDTHxHEIGHT.bmp in the folder that the environment variable
// QUORVANE_SCREENSHOTS names (a Linux path will do). Does nothing without the variable.
void SaveScreen(const TodayFrame& frame, const std::string& name);

}  // namespace ui
