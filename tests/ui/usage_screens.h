// tests/ui/usage_screens.h - what the tests of the charts' dialogs share: choosing dates, and a dialog's pixels.
#pragma once

#include "tests/support/traffic_logs.h"
#include "tests/ui/ui_test.h"

namespace ui {

// Sets a date picker as a person does: the value and its notification.
inline void PickDate(HWND dialog, int picker, const CalendarDate& date, DWORD validity = GDT_VALID) {
    NMDATETIMECHANGE change = {};
    change.nmhdr = {GetDlgItem(dialog, picker), static_cast<UINT_PTR>(picker), static_cast<UINT>(DTN_DATETIMECHANGE)};
    change.dwFlags = validity;
    change.st.wYear = static_cast<WORD>(date.year);
    change.st.wMonth = static_cast<WORD>(date.month);
    change.st.wDay = static_cast<WORD>(date.day);
    if (validity == GDT_VALID) {
        SendDlgItemMessageW(dialog, picker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&change.st));
    }
    SendMessageW(dialog, WM_NOTIFY, static_cast<WPARAM>(picker), reinterpret_cast<LPARAM>(&change));
}

// Whether the window shows the text in black on white in its own font, uncut.
bool ShowsText(HWND window, const std::wstring& text);

inline void TapScaled(HWND dialog, int x, int y) {
    Tap(dialog, x * ScreenScale(), y * ScreenScale());
}

// Reads a dialog's pixels at once; asking one by one would repaint for each.
struct Pixels {
    HWND dialog;
    HDC context;

    explicit Pixels(HWND of) : dialog(of) {
        RedrawWindow(dialog, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        context = GetDCEx(dialog, nullptr, DCX_CACHE);
    }
    Pixels(const Pixels&) = delete;
    Pixels& operator=(const Pixels&) = delete;
    ~Pixels() { ReleaseDC(dialog, context); }

    COLORREF At(int x, int y) const { return GetPixel(context, x, y); }
    // Whether anything black is in the area, which is in logical pixels.
    bool HasInk(const RECT& area) const {
        const int scale = ScreenScale();
        for (LONG y = area.top * scale; y < area.bottom * scale; ++y) {
            for (LONG x = area.left * scale; x < area.right * scale; ++x) {
                if (At(x, y) == RGB(0, 0, 0)) {
                    return true;
                }
            }
        }
        return false;
    }
};

}  // namespace ui
