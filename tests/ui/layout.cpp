// Measures the texts with the dialog's own font and compares rectangles.

#include "tests/ui/layout.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/screen.h"
#include "tests/ui/dialog_script.h"

namespace ui {
namespace {

struct Control {
    HWND window;
    RECT area;            // on the screen
    bool standsOnOthers;  // a group frame around them, the arrows inside their field
    std::string name;
};

int ButtonKindOf(HWND window) {
    return IsOfClass(window, L"Button") ? GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK : -1;
}

std::vector<Control> ControlsOf(HWND dialog) {
    std::vector<Control> controls;
    HWND child = nullptr;
    while ((child = FindWindowExW(dialog, child, nullptr, nullptr)) != nullptr) {
        if (IsWindowVisible(child)) {
            wchar_t text[200] = {};
            GetWindowTextW(child, text, 200);
            Control control = {child,
                               {},
                               IsOfClass(child, UPDOWN_CLASSW) || ButtonKindOf(child) == BS_GROUPBOX,
                               std::to_string(GetDlgCtrlID(child)) + " " + std::string(text, text + wcslen(text))};
            GetWindowRect(child, &control.area);
            controls.push_back(control);
        }
    }
    return controls;
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
    const bool hasBox = ButtonKindOf(control.window) > BS_DEFPUSHBUTTON;
    const LONG box = hasBox ? GetSystemMetrics(SM_CXMENUCHECK) + 4 : 0;
    const LONG room = control.area.right - control.area.left - box;
    RECT needed = {0, 0, room, 0};
    HDC context = GetDC(control.window);
    HGDIOBJ previous = SelectObject(context, reinterpret_cast<HFONT>(SendMessageW(control.window, WM_GETFONT, 0, 0)));
    DrawTextW(context, text, -1, &needed, DT_CALCRECT | (label ? DT_WORDBREAK : DT_SINGLELINE));
    SelectObject(context, previous);
    ReleaseDC(control.window, context);
    EXPECT_TRUE(needed.right <= room && needed.bottom <= control.area.bottom - control.area.top)
        << control.name << " is cut";
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
    EXPECT_TRUE(Contains(screen, area)) << "the dialog reaches beyond the screen";
    const std::vector<Control> controls = ControlsOf(dialog);
    const RECT client = ClientArea(dialog);
    for (size_t i = 0; i < controls.size(); ++i) {
        if (GetDlgCtrlID(controls[i].window) != cutControl) {
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
