// Wine's date picker draws the month's whole name where "MMM" asks for its abbreviation, centred in a field that fits
// the abbreviation: "embe" for September, and highlighted far into the next field. There the month is drawn again.

#include "platform/date_picker.h"

#include "platform/controls.h"
#include "platform/desktop/wine.h"
#include "platform/scoped_gdi.h"

#include <algorithm>

namespace platform {
namespace {

constexpr wchar_t kFormatProperty[] = L"QuorvaneDateFormat";
constexpr wchar_t kProcedureProperty[] = L"QuorvanePickerProc";
constexpr wchar_t kMonthFormat[] = L"MMM";
constexpr int kFieldLeft = 2;  // where Wine's first field begins

void FormatDate(const SYSTEMTIME& date, const wchar_t* format, wchar_t (&text)[64]) {
    if (GetDateFormatW(LOCALE_USER_DEFAULT, 0, &date, format, text, 64) == 0) {
        text[0] = 0;
    }
}

// Wine's first field is as wide as the widest abbreviation.
SIZE MonthFieldSize(HDC context) {
    SIZE largest = {};
    for (WORD month = 1; month <= 12; ++month) {
        wchar_t name[64];
        FormatDate({2006, month, 0, 1, 0, 0, 0, 0}, kMonthFormat, name);
        SIZE size = {};
        GetTextExtentPoint32W(context, name, static_cast<int>(wcslen(name)), &size);
        largest = {std::max(largest.cx, size.cx), std::max(largest.cy, size.cy)};
    }
    return largest;
}

void DrawField(HDC context, RECT area, const wchar_t* text, UINT alignment) {
    DrawTextW(context, text, -1, &area, alignment | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

// The highlight of a chosen month runs under the fields behind it, so those are drawn again with it.
void DrawMonthAgain(HWND picker, HDC context, const SYSTEMTIME& date, const wchar_t* format) {
    const SIZE field = MonthFieldSize(context);
    const COLORREF highlight = GetSysColor(COLOR_ACTIVECAPTION);
    const bool chosen = GetPixel(context, kFieldLeft, 1) == highlight;
    RECT month = {0, 0, kFieldLeft + field.cx, field.cy + 2};
    RECT rest = month;
    GetClientRect(picker, &rest);
    rest = {month.right, 0, rest.right - GetSystemMetrics(SM_CXVSCROLL), month.bottom};
    wchar_t text[64];
    FormatDate(date, format + wcslen(kMonthFormat), text);
    FillRect(context, &month, GetSysColorBrush(COLOR_WINDOW));
    if (chosen) {
        FillRect(context, &rest, GetSysColorBrush(COLOR_WINDOW));
        SetTextColor(context, GetSysColor(COLOR_WINDOWTEXT));
        DrawField(context, rest, text, DT_LEFT);
        month.left = kFieldLeft;
        const ScopedObject brush(CreateSolidBrush(highlight));
        FillRect(context, &month, static_cast<HBRUSH>(brush.object));
    }
    month.left = kFieldLeft;
    SetTextColor(context, GetSysColor(chosen ? COLOR_WINDOW : COLOR_WINDOWTEXT));
    FormatDate(date, kMonthFormat, text);
    DrawField(context, month, text, DT_CENTER);
}

void OnPainted(HWND picker) {
    SYSTEMTIME date = {};
    const auto* format = static_cast<const wchar_t*>(GetPropW(picker, kFormatProperty));
    if (SendMessageW(picker, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&date)) != GDT_VALID) {
        return;
    }
    const ScopedWindowContext window(picker);
    const ScopedSelection font(window.context, reinterpret_cast<HGDIOBJ>(SendMessageW(picker, WM_GETFONT, 0, 0)));
    SetBkMode(window.context, TRANSPARENT);
    DrawMonthAgain(picker, window.context, date, format);
}

LRESULT CALLBACK PickerProc(HWND picker, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto procedure = reinterpret_cast<WNDPROC>(GetPropW(picker, kProcedureProperty));
    if (message == WM_NCDESTROY) {
        RemovePropW(picker, kFormatProperty);
        RemovePropW(picker, kProcedureProperty);
    }
    const LRESULT result = CallWindowProcW(procedure, picker, message, wParam, lParam);
    if (message == WM_PAINT) {
        OnPainted(picker);
    }
    return result;
}

}  // namespace

void SetDateFormat(HWND picker, const wchar_t* format) {
    if (IsWine()) {
        const bool known = GetPropW(picker, kFormatProperty) != nullptr;
        SetPropW(picker, kFormatProperty, const_cast<wchar_t*>(format));
        if (!known) {
            SetPropW(picker, kProcedureProperty, reinterpret_cast<HANDLE>(GetWindowLongPtrW(picker, GWLP_WNDPROC)));
            SetWindowLongPtrW(picker, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(PickerProc));
        }
    }
    SendMessageW(picker, DTM_SETFORMATW, 0, reinterpret_cast<LPARAM>(format));
}

}  // namespace platform
