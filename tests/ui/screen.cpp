// The frame is a captionless popup, so that its client area has exactly the asked size on any monitor. Texts are
// measured with the dialog's own font, and looked for as the system draws them.

#include <cstdlib>

#include "platform/desktop/today_frame.h"
#include "platform/scoped_gdi.h"
#include "platform/screen.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

LRESULT CALLBACK FrameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* frame = reinterpret_cast<TodayFrame*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == TODAYM_DRAWWATERMARK) {
        frame->watermark = *reinterpret_cast<const TODAYDRAWWATERMARKINFO*>(lParam);
        FillRect(frame->watermark.hdc, &frame->watermark.rc,
                 reinterpret_cast<HBRUSH>(GetClassLongPtrW(window, GCLP_HBRBACKGROUND)));
        return TRUE;
    }
    if (message == platform::kFrameKeyboardMessage) {
        frame->keyboard += wParam != 0 ? '+' : '-';
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void RegisterFrameClass(const wchar_t* name, WNDPROC procedure, COLORREF ground) {
    WNDCLASSW frame = {};
    frame.lpfnWndProc = procedure;
    frame.hInstance = itemState.instance;
    frame.lpszClassName = name;
    frame.hbrBackground = CreateSolidBrush(ground);
    if (RegisterClassW(&frame) == 0) {
        DeleteObject(frame.hbrBackground);  // it is there already
    }
}

std::string NameOf(SIZE screen) {
    return std::to_string(screen.cx) + "x" + std::to_string(screen.cy);
}

bool Contains(const RECT& outer, const RECT& inner) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

RECT AreaOf(HWND window) {
    RECT area = {};
    GetWindowRect(window, &area);
    return area;
}

// In screen coordinates.
RECT ClientAreaOf(HWND window) {
    RECT area = {};
    GetClientRect(window, &area);
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
    return area;
}

int ButtonKindOf(HWND window) {
    return IsOfClass(window, L"Button") ? GetWindowLongW(window, GWL_STYLE) & BS_TYPEMASK : -1;
}

// A group frame stands around other controls, the arrows inside their field.
bool StandsOnOthers(HWND control) {
    return IsOfClass(control, UPDOWN_CLASSW) || ButtonKindOf(control) == BS_GROUPBOX;
}

bool ShowsWholeText(HWND control) {
    const bool label = IsOfClass(control, L"Static");
    if (StandsOnOthers(control) || (!label && !IsOfClass(control, L"Button"))) {
        return true;
    }
    wchar_t text[400] = {};
    GetWindowTextW(control, text, 400);
    const RECT area = AreaOf(control);
    const bool hasBox = ButtonKindOf(control) > BS_DEFPUSHBUTTON;
    const LONG room = area.right - area.left - (hasBox ? GetSystemMetrics(SM_CXMENUCHECK) + 4 : 0);
    const platform::ScopedWindowContext screen(control);
    const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0));
    const platform::ScopedSelection selectedFont(screen.context, font);
    RECT needed = {0, 0, room, 0};
    DrawTextW(screen.context, text, -1, &needed, DT_CALCRECT | (label ? DT_WORDBREAK : DT_SINGLELINE));
    return needed.right <= room && needed.bottom <= area.bottom - area.top;
}

}  // namespace

TodayFrame::TodayFrame(SIZE screen) {
    RegisterFrameClass(platform::kFrameClass, FrameProc, kWatermark);
    RegisterFrameClass(platform::kTaskbarClass, DefWindowProcW, kTaskbar);
    window = CreateWindowExW(0, platform::kFrameClass, L"Today", WS_POPUP | WS_CLIPCHILDREN, 0, 0, screen.cx, screen.cy,
                             nullptr, nullptr, itemState.instance, nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    RefreshScreenSize();
    EXPECT_EQ(NameOf({itemState.screenWidth, itemState.screenHeight}), NameOf(screen));
    HWND taskbar = CreateWindowExW(0, platform::kTaskbarClass, nullptr, WS_CHILD | WS_VISIBLE, 0, 0, screen.cx,
                                   FrameTaskbarHeight(), window, nullptr, itemState.instance, nullptr);
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    UpdateWindow(taskbar);
}

TodayFrame::~TodayFrame() {
    DestroyWindow(window);
}

void ForEachScreen(const std::function<void(TodayFrame& frame)>& body) {
    for (const SIZE screen : kScreenSizes) {
        SCOPED_TRACE(NameOf(screen));
        TodayFrame frame(screen);
        body(frame);
    }
}

void SaveScreen(const TodayFrame& frame, const std::string& name) {
    if (const char* folder = std::getenv("QUORVANE_SCREENSHOTS")) {
        const std::string size = NameOf({itemState.screenWidth, itemState.screenHeight});
        // A Linux path is reached through drive Z:.
        const std::string path = std::string(folder[0] == '/' ? "Z:" : "") + folder + "/" + name + "-" + size + ".bmp";
        EXPECT_TRUE(SavePicture(TakeScreenPicture(frame.window), std::wstring(path.begin(), path.end()).c_str()));
    }
}

void ExpectReadable(HWND dialog, const TodayFrame& frame, int cutControl) {
    RECT screen = ClientAreaOf(frame.window);
    screen.top = AreaOf(platform::FindTaskbar()).bottom;
    EXPECT_TRUE(Contains(screen, AreaOf(dialog))) << "the dialog reaches beyond the screen";
    std::vector<HWND> controls;
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (!IsWindowVisible(child)) {
            continue;
        }
        const int id = GetDlgCtrlID(child);
        const RECT area = AreaOf(child);
        EXPECT_TRUE(id == cutControl || Contains(ClientAreaOf(dialog), area)) << id << " reaches beyond the dialog";
        EXPECT_TRUE(id == cutControl || ShowsWholeText(child)) << id << " is cut";
        for (HWND other : controls) {
            const RECT otherArea = AreaOf(other);
            RECT common = {};
            EXPECT_FALSE(IntersectRect(&common, &area, &otherArea) && !StandsOnOthers(child) && !StandsOnOthers(other))
                << id << " overlaps " << GetDlgCtrlID(other);
        }
        controls.push_back(child);
    }
}

COLORREF PixelAt(HWND window, int x, int y) {
    return TakePicture(window).At(x, y);
}

bool HasColor(const Picture& picture, const RECT& area, COLORREF color) {
    for (LONG y = area.top; y < area.bottom; ++y) {
        for (LONG x = area.left; x < area.right; ++x) {
            if (picture.At(x, y) == color) {
                return true;
            }
        }
    }
    return false;
}

bool ShowsText(HWND window, const std::wstring& text) {
    const Picture shown = TakePicture(window);
    const platform::ScopedWindowContext screen(window);
    const platform::ScopedMemoryContext memory(screen.context);
    RECT size = {};
    const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0));
    const platform::ScopedSelection selectedFont(memory.context, font);
    DrawTextW(memory.context, text.c_str(), -1, &size, DT_CALCRECT);
    const platform::ScopedObject bitmap(CreateCompatibleBitmap(screen.context, size.right, size.bottom));
    const platform::ScopedSelection selectedBitmap(memory.context, bitmap.object);
    FillRect(memory.context, &size, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    DrawTextW(memory.context, text.c_str(), -1, &size, 0);
    const auto isAt = [&](int left, int top) {
        for (int i = 0; i < size.right * size.bottom; ++i) {
            const int x = i % size.right;
            const int y = i / size.right;
            if (shown.At(left + x, top + y) != GetPixel(memory.context, x, y)) {
                return false;
            }
        }
        return true;
    };
    for (int place = 0; place < shown.width * shown.height; ++place) {
        if (isAt(place % shown.width, place / shown.width)) {
            return true;
        }
    }
    return false;
}

}  // namespace ui
