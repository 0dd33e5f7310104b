// Measures the texts with the dialog's own font and compares rectangles.

#include "tests/ui/layout.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/screen.h"

namespace ui {
namespace {

struct Control {
    HWND window;
    int id;
    RECT area;            // on the screen
    bool standsOnOthers;  // a group frame around them, the arrows inside their field
    std::string name;
};

bool IsOfClass(HWND window, const wchar_t* wanted) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return _wcsicmp(name, wanted) == 0;
}

void Collect(HWND window, std::vector<Control>& controls) {
    if (!IsWindowVisible(window)) {
        return;
    }
    Control control = {window, GetDlgCtrlID(window), {}, false, ""};
    GetWindowRect(window, &control.area);
    control.standsOnOthers =
        IsOfClass(window, UPDOWN_CLASSW) ||
        (IsOfClass(window, L"Button") && (GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX);
    wchar_t text[200] = {};
    GetWindowTextW(window, text, 200);
    control.name = std::to_string(control.id) + " \"" + std::string(text, text + wcslen(text)) + "\"";
    controls.push_back(control);
}

bool Contains(const RECT& outer, const RECT& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

// The client area in screen coordinates.
RECT ClientArea(HWND window) {
    RECT area = {};
    GetClientRect(window, &area);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

void ExpectWholeText(const Control& control) {
    const bool label = IsOfClass(control.window, L"Static");
    if (control.standsOnOthers || (!label && !IsOfClass(control.window, L"Button"))) {
        return;
    }
    wchar_t text[400] = {};
    GetWindowTextW(control.window, text, 400);
    const LONG width = control.area.right - control.area.left;
    const LONG height = control.area.bottom - control.area.top;
    const bool hasBox = !label && (GetWindowLongW(control.window, GWL_STYLE) & BS_TYPEMASK) > BS_DEFPUSHBUTTON;
    const LONG room = hasBox ? width - GetSystemMetrics(SM_CXMENUCHECK) - 4 : width;
    RECT needed = {0, 0, room, 0};
    HDC context = GetDC(control.window);
    HGDIOBJ previous = SelectObject(context, reinterpret_cast<HFONT>(SendMessageW(control.window, WM_GETFONT, 0, 0)));
    DrawTextW(context, text, -1, &needed, DT_CALCRECT | (label ? DT_WORDBREAK : DT_SINGLELINE));
    SelectObject(context, previous);
    ReleaseDC(control.window, context);
    EXPECT_LE(needed.right, room) << control.name << " is too narrow";
    EXPECT_LE(needed.bottom, height) << control.name << " is too low";
}

}  // namespace

void ExpectReadable(HWND dialog, HWND frame, int cutControl) {
    RECT area = {};
    GetWindowRect(dialog, &area);
    RECT screen = ClientArea(frame);
    if (HWND taskbar = platform::FindTaskbar()) {
        RECT bar = {};
        GetWindowRect(taskbar, &bar);
        screen.top = bar.bottom;
    }
    EXPECT_TRUE(Contains(screen, area)) << "the dialog reaches beyond the screen: " << area.left - screen.left << ","
                                        << area.top - screen.top << " to " << area.right - screen.left << ","
                                        << area.bottom - screen.top;
    std::vector<Control> controls;
    HWND child = nullptr;
    while ((child = FindWindowExW(dialog, child, nullptr, nullptr)) != nullptr) {
        Collect(child, controls);
    }
    const RECT client = ClientArea(dialog);
    for (size_t i = 0; i < controls.size(); ++i) {
        if (controls[i].id != cutControl) {
            EXPECT_TRUE(Contains(client, controls[i].area)) << controls[i].name << " reaches beyond the dialog";
            ExpectWholeText(controls[i]);
        }
        for (size_t j = 0; j < i; ++j) {
            RECT common = {};
            EXPECT_FALSE(IntersectRect(&common, &controls[i].area, &controls[j].area) && !controls[i].standsOnOthers &&
                         !controls[j].standsOnOthers)
                << controls[i].name << " overlaps " << controls[j].name;
        }
    }
}

}  // namespace ui
