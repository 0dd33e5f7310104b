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
    RECT area;  // on the screen
    bool isGroup;
    std::string name;
};

bool IsOfClass(HWND window, const wchar_t* wanted) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return _wcsicmp(name, wanted) == 0;
}

// Of the dialog alone: a field inside a combo box or a header inside a list is no control of its own.
BOOL CALLBACK Collect(HWND window, LPARAM controls) {
    if (!IsWindowVisible(window) || !IsOfClass(GetParent(window), L"#32770")) {
        return TRUE;
    }
    Control control = {window, GetDlgCtrlID(window), {}, false, ""};
    GetWindowRect(window, &control.area);
    control.isGroup = IsOfClass(window, L"Button") && (GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX;
    wchar_t text[200] = {};
    GetWindowTextW(window, text, 200);
    control.name = std::to_string(control.id) + " \"" + std::string(text, text + wcslen(text)) + "\"";
    reinterpret_cast<std::vector<Control>*>(controls)->push_back(control);
    return TRUE;
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
    if (control.isGroup || (!label && !IsOfClass(control.window, L"Button"))) {
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
    EnumChildWindows(dialog, Collect, reinterpret_cast<LPARAM>(&controls));
    const RECT client = ClientArea(dialog);
    for (size_t i = 0; i < controls.size(); ++i) {
        EXPECT_TRUE(Contains(client, controls[i].area)) << controls[i].name << " reaches beyond the dialog";
        if (controls[i].id != cutControl) {
            ExpectWholeText(controls[i]);
        }
        for (size_t j = 0; j < i; ++j) {
            RECT common = {};
            EXPECT_FALSE(IntersectRect(&common, &controls[i].area, &controls[j].area) && !controls[i].isGroup &&
                         !controls[j].isGroup)
                << controls[i].name << " overlaps " << controls[j].name;
        }
    }
}

}  // namespace ui
