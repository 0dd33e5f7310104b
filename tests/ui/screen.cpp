// The frame is a captionless popup, so that its client area has exactly the asked size on any monitor. Texts are
// measured with the dialog's own font.

#include <cstdlib>

#include "platform/desktop/today_frame.h"
#include "platform/scoped_gdi.h"
#include "platform/screen.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

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
    const RECT area = AreaOf(control);
    const bool hasBox = ButtonKindOf(control) > BS_DEFPUSHBUTTON;
    const LONG room = area.right - area.left - (hasBox ? GetSystemMetrics(SM_CXMENUCHECK) + 4 : 0);
    const platform::ScopedWindowContext screen(control);
    const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0));
    const platform::ScopedSelection selectedFont(screen.context, font);
    RECT needed = {0, 0, room, 0};
    DrawTextW(screen.context, TextOf(control).c_str(), -1, &needed,
              DT_CALCRECT | (label ? DT_WORDBREAK : DT_SINGLELINE));
    return needed.right <= room && needed.bottom <= area.bottom - area.top;
}

}  // namespace

LRESULT CALLBACK UiTest::FrameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* test = reinterpret_cast<UiTest*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == TODAYM_DRAWWATERMARK) {
        const auto& asked = *reinterpret_cast<const TODAYDRAWWATERMARKINFO*>(lParam);
        FillRect(asked.hdc, &asked.rc, reinterpret_cast<HBRUSH>(GetClassLongPtrW(window, GCLP_HBRBACKGROUND)));
        return TRUE;
    }
    if (message == platform::kFrameKeyboardMessage) {
        test->keyboard += wParam != 0 ? '+' : '-';
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void UiTest::SetUp() {
    RegisterFrameClass(platform::kFrameClass, FrameProc, kWatermark);
    RegisterFrameClass(platform::kTaskbarClass, DefWindowProcW, kTaskbar);
    int width = 0;
    int height = 0;
    ASSERT_EQ(sscanf(GetParam(), "%dx%d", &width, &height), 2);
    frame = CreateWindowExW(0, platform::kFrameClass, L"Today", WS_POPUP | WS_CLIPCHILDREN, 0, 0, width, height,
                            nullptr, nullptr, itemState.instance, nullptr);
    SetWindowLongPtrW(frame, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    RefreshScreenSize();
    EXPECT_EQ(std::pair(itemState.screenWidth, itemState.screenHeight), std::pair(width, height));
    HWND taskbar = CreateWindowExW(0, platform::kTaskbarClass, nullptr, WS_CHILD | WS_VISIBLE, 0, 0, width,
                                   FrameTaskbarHeight(), frame, nullptr, itemState.instance, nullptr);
    ShowWindow(frame, SW_SHOW);
    UpdateWindow(frame);
    UpdateWindow(taskbar);
}

void UiTest::SaveScreen(const std::string& name) const {
    if (const char* folder = std::getenv("QUORVANE_SCREENSHOTS")) {
        // A Linux path is reached through drive Z:.
        const std::string path = (folder[0] == '/' ? "Z:" : "") + (folder + ("/" + name)) + "-" + GetParam() + ".bmp";
        EXPECT_TRUE(SavePicture(TakeScreenPicture(frame), std::wstring(path.begin(), path.end()).c_str()));
    }
}

void UiTest::ExpectReadable(HWND dialog, int cutControl) const {
    RECT screen = ClientAreaOf(frame);
    screen.top = AreaOf(platform::FindTaskbar()).bottom;
    EXPECT_TRUE(Contains(screen, AreaOf(dialog))) << "the dialog reaches beyond the screen";
    std::vector<HWND> before;
    for (HWND child : ChildrenOf(dialog)) {
        if (!IsWindowVisible(child)) {
            continue;
        }
        const int id = GetDlgCtrlID(child);
        const RECT area = AreaOf(child);
        EXPECT_TRUE(id == cutControl || Contains(ClientAreaOf(dialog), area)) << id << " reaches beyond the dialog";
        EXPECT_TRUE(id == cutControl || ShowsWholeText(child)) << id << " is cut";
        for (HWND other : before) {
            const RECT otherArea = AreaOf(other);
            RECT common = {};
            EXPECT_FALSE(IntersectRect(&common, &area, &otherArea) && !StandsOnOthers(child) && !StandsOnOthers(other))
                << id << " overlaps " << GetDlgCtrlID(other);
        }
        before.push_back(child);
    }
}

void FillWindow(HWND window, const RECT& area, COLORREF color) {
    HDC context = GetDCEx(window, nullptr, DCX_CACHE);
    const platform::ScopedObject brush(CreateSolidBrush(color));
    FillRect(context, &area, static_cast<HBRUSH>(brush.object));
    ReleaseDC(window, context);
}

Picture Drawn(SIZE size, COLORREF ground, const std::function<void(HDC)>& draw) {
    HWND canvas =
        CreateWindowExW(0, L"Static", nullptr, WS_POPUP, 0, 0, size.cx, size.cy, nullptr, nullptr, nullptr, nullptr);
    ShowWindow(canvas, SW_SHOWNA);  // the focus stays where it is
    UpdateWindow(canvas);
    FillWindow(canvas, {0, 0, size.cx, size.cy}, ground);
    HDC context = GetDC(canvas);
    draw(context);
    ReleaseDC(canvas, context);
    const Picture picture = TakePicture(canvas);
    DestroyWindow(canvas);
    return picture;
}

bool IsAt(const Picture& picture, int x, int y, const Picture& part) {
    for (int i = 0; i < part.width * part.height; ++i) {
        const int column = i % part.width;
        const int row = i / part.width;
        if (picture.At(x + column, y + row) != part.At(column, row)) {
            return false;
        }
    }
    return true;
}

std::string Colors(const Picture& picture, int x, int y, int stepX, int stepY, int count) {
    std::string colors;
    for (int i = 0; i < count; ++i) {
        const COLORREF color = picture.At(x + i * stepX, y + i * stepY);
        colors += color == kRed ? 'R' : color == kGreen ? 'G' : color == kBlue ? 'B' : color == kBlack ? 'K' : '.';
    }
    return colors;
}

}  // namespace ui

int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    itemState.instance = GetModuleHandleW(nullptr);
    // As the Today host does for every plug-in.
    const INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_WIN95_CLASSES | ICC_DATE_CLASSES};
    InitCommonControlsEx(&controls);
    SetCurrentDirectoryW(L"C:\\");
    return RUN_ALL_TESTS();
}
