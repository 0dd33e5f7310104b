// The test's frame window: a captionless popup, so that its client area has exactly the asked size on any monitor.

#include "tests/ui/today_frame.h"

#include "item/item_state.h"
#include "platform/desktop/today_frame.h"

#include <cstdlib>

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

}  // namespace

std::string NameOf(SIZE screen) {
    return std::to_string(screen.cx) + "x" + std::to_string(screen.cy);
}

TodayFrame::TodayFrame(SIZE screen) {
    RegisterFrameClass(platform::kFrameClass, FrameProc, kWatermark);
    RegisterFrameClass(platform::kTaskbarClass, DefWindowProcW, kTaskbar);
    window = CreateWindowExW(0, platform::kFrameClass, L"Today", WS_POPUP | WS_CLIPCHILDREN, 0, 0, screen.cx, screen.cy,
                             nullptr, nullptr, itemState.instance, nullptr);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    HWND taskbar = CreateWindowExW(0, platform::kTaskbarClass, nullptr, WS_CHILD | WS_VISIBLE, 0, 0, screen.cx,
                                   TaskbarHeightOf(screen), window, nullptr, itemState.instance, nullptr);
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    UpdateWindow(taskbar);
    RefreshScreenSize();
    EXPECT_EQ(NameOf({itemState.screenWidth, itemState.screenHeight}), NameOf(screen));
}

TodayFrame::~TodayFrame() {
    DestroyWindow(window);
}

void SaveScreen(const TodayFrame& frame, const std::string& name) {
    if (const char* folder = std::getenv("QUORVANE_SCREENSHOTS")) {
        const std::string size = NameOf({itemState.screenWidth, itemState.screenHeight});
        // A Linux path is reached through drive Z:.
        const std::string path = std::string(folder[0] == '/' ? "Z:" : "") + folder + "/" + name + "-" + size + ".bmp";
        EXPECT_TRUE(SavePicture(TakeScreenPicture(frame.window), std::wstring(path.begin(), path.end()).c_str()));
    }
}

}  // namespace ui
