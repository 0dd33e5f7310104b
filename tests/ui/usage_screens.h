// tests/ui/usage_screens.h - what the tests of the charts' dialogs share: templates, dates, and pixels of the charts.
#pragma once

#include "item/item_state.h"
#include "item/strip_paint.h"
#include "item/tap_dispatch.h"
#include "platform/scoped_gdi.h"
#include "resources/resource_ids.h"
#include "tests/support/traffic_logs.h"
#include "tests/ui/today_frame.h"

namespace ui {

inline constexpr COLORREF kRed = RGB(255, 0, 0);
inline constexpr COLORREF kBlue = RGB(0, 0, 255);

// Taps the strip's icon.
inline void OpenUsage(const TodayFrame& frame) {
    CreatePens();
    DispatchTap(frame.window, static_cast<uint32_t>(70 * ScreenScale()), 10);
}

// Sets a date picker as a person does: the value and its notification.
inline void PickDate(HWND dialog, int picker, const CalendarDate& date) {
    NMDATETIMECHANGE change = {};
    change.nmhdr = {GetDlgItem(dialog, picker), static_cast<UINT_PTR>(picker), static_cast<UINT>(DTN_DATETIMECHANGE)};
    change.dwFlags = GDT_VALID;
    change.st.wYear = static_cast<WORD>(date.year);
    change.st.wMonth = static_cast<WORD>(date.month);
    change.st.wDay = static_cast<WORD>(date.day);
    SendDlgItemMessageW(dialog, picker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&change.st));
    SendMessageW(dialog, WM_NOTIFY, static_cast<WPARAM>(picker), reinterpret_cast<LPARAM>(&change));
}

// Drops a list down and clicks an entry.
inline void ChooseFromList(HWND combo, int index) {
    COMBOBOXINFO info = {};
    info.cbSize = sizeof(info);
    GetComboBoxInfo(combo, &info);
    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    RECT entry = {};
    SendMessageW(info.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&entry));
    Tap(info.hwndList, entry.left + 5, (entry.top + entry.bottom) / 2);
    SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0);
}

// Whether the window shows the text in black on white in its own font, uncut.
inline bool ShowsText(HWND window, const std::wstring& text) {
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW);
    HDC screen = GetDC(window);
    const platform::ScopedMemoryContext memory(screen);
    const platform::ScopedSelection font(memory.context,
                                         reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0)));
    RECT size = {};
    DrawTextW(memory.context, text.c_str(), -1, &size, DT_CALCRECT);
    const platform::ScopedObject bitmap(CreateCompatibleBitmap(screen, size.right, size.bottom));
    const platform::ScopedSelection selection(memory.context, bitmap.object);
    FillRect(memory.context, &size, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    DrawTextW(memory.context, text.c_str(), -1, &size, 0);
    RECT client = {};
    GetClientRect(window, &client);
    const auto equals = [&](int left, int top) {
        for (int y = 0; y < size.bottom; ++y) {
            for (int x = 0; x < size.right; ++x) {
                if (GetPixel(screen, left + x, top + y) != GetPixel(memory.context, x, y)) {
                    return false;
                }
            }
        }
        return true;
    };
    bool found = false;
    for (int top = 0; top + size.bottom <= client.bottom && !found; ++top) {
        for (int left = 0; left + size.right <= client.right && !found; ++left) {
            found = equals(left, top);
        }
    }
    ReleaseDC(window, screen);
    return found;
}

inline void TapScaled(HWND dialog, int x, int y) {
    Tap(dialog, x * ScreenScale(), y * ScreenScale());
}

}  // namespace ui
