// The test's frame window: a captionless popup, so that its client area has exactly the asked size on any monitor.

#include "tests/ui/today_frame.h"

#include "item/item_state.h"
#include "platform/desktop/today_frame.h"
#include "platform/scoped_gdi.h"

#include <cstdlib>

namespace ui {
namespace {

void FillWith(HDC context, const RECT& area, COLORREF color) {
    const platform::ScopedObject brush(CreateSolidBrush(color));
    FillRect(context, &area, static_cast<HBRUSH>(brush.object));
}

LRESULT Fill(HWND window, WPARAM context, COLORREF color) {
    RECT area = {};
    GetClientRect(window, &area);
    FillWith(reinterpret_cast<HDC>(context), area, color);
    return TRUE;
}

LRESULT CALLBACK FrameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* frame = reinterpret_cast<TodayFrame*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    switch (message) {
        case WM_ERASEBKGND:
            return Fill(window, wParam, kWatermark);
        case TODAYM_DRAWWATERMARK: {
            const auto& request = *reinterpret_cast<const TODAYDRAWWATERMARKINFO*>(lParam);
            frame->watermarks.push_back(request);
            FillWith(request.hdc, request.rc, kWatermark);
            return TRUE;
        }
        case platform::kFrameKeyboardMessage:
            frame->keyboard.push_back({reinterpret_cast<HWND>(lParam), wParam != 0});
            return 0;
        default:
            return DefWindowProcW(window, message, wParam, lParam);
    }
}

LRESULT CALLBACK TaskbarProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_ERASEBKGND ? Fill(window, wParam, kTaskbar) : DefWindowProcW(window, message, wParam, lParam);
}

void RegisterFrameClasses() {
    WNDCLASSW frame = {};
    frame.lpfnWndProc = FrameProc;
    frame.hInstance = itemState.instance;
    frame.lpszClassName = platform::kFrameClass;
    RegisterClassW(&frame);
    WNDCLASSW taskbar = frame;
    taskbar.lpfnWndProc = TaskbarProc;
    taskbar.lpszClassName = platform::kTaskbarClass;
    RegisterClassW(&taskbar);
}

std::wstring ScreenshotPath(const char* folder, const std::string& name) {
    // A Linux path is reached through drive Z:.
    const std::string path = std::string(folder[0] == '/' ? "Z:" : "") + folder + "/" + name + ".bmp";
    return {path.begin(), path.end()};
}

}  // namespace

std::string NameOf(SIZE screen) {
    return std::to_string(screen.cx) + "x" + std::to_string(screen.cy);
}

int TaskbarHeightOf(SIZE screen) {
    return IsHiRes(screen) ? 52 : 26;
}

TodayFrame::TodayFrame(SIZE screen) {
    RegisterFrameClasses();
    window = CreateWindowExW(0, platform::kFrameClass, L"Today", WS_POPUP | WS_CLIPCHILDREN, 0, 0, screen.cx, screen.cy,
                             nullptr, nullptr, itemState.instance, nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    taskbar = CreateWindowExW(0, platform::kTaskbarClass, nullptr, WS_CHILD | WS_VISIBLE, 0, 0, screen.cx,
                              TaskbarHeightOf(screen), window, nullptr, itemState.instance, nullptr);
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    UpdateWindow(taskbar);
    RefreshScreenSize();
    EXPECT_EQ(itemState.screenWidth, screen.cx) << "the frame has another size than asked for";
    EXPECT_EQ(itemState.screenHeight, screen.cy) << "the frame has another size than asked for";
}

TodayFrame::~TodayFrame() {
    DestroyWindow(window);
}

void SaveScreen(const TodayFrame& frame, const std::string& name) {
    if (const char* folder = std::getenv("QUORVANE_SCREENSHOTS")) {
        EXPECT_TRUE(SavePicture(TakeScreenPicture(frame.window), ScreenshotPath(folder, name).c_str()));
    }
}

}  // namespace ui
