// The frame is a captionless popup, so that its client area has exactly the asked size on any monitor. Texts are
// measured with the dialog's own font.

#include <cstdlib>

#include "item/strip_paint.h"
#include "item/tap_dispatch.h"
#include "options/options_sheet.h"
#include "platform/desktop/today_frame.h"
#include "platform/dialogs.h"
#include "platform/scoped_gdi.h"
#include "platform/screen.h"
#include "platform/today.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

WINDOWINFO InfoOf(HWND window) {
    WINDOWINFO info = {};
    info.cbSize = sizeof(info);
    GetWindowInfo(window, &info);
    return info;
}

bool Contains(const RECT& outer, const RECT& inner) {
    RECT both = {};
    UnionRect(&both, &outer, &inner);
    return EqualRect(&both, &outer) != FALSE;
}

// A group frame stands around other controls, the arrows inside their field.
bool Overlap(HWND a, HWND b) {
    const auto standsOnOthers = [](HWND control) {
        const bool button = IsOfClass(control, L"Button");
        return button ? (GetWindowLongW(control, GWL_STYLE) & BS_TYPEMASK) == BS_GROUPBOX
                      : IsOfClass(control, UPDOWN_CLASSW);
    };
    RECT common = InfoOf(a).rcWindow;
    const RECT other = InfoOf(b).rcWindow;
    return IsWindowVisible(b) && !standsOnOthers(a) && !standsOnOthers(b) && IntersectRect(&common, &common, &other);
}

bool ShowsWholeText(HWND control) {
    const bool label = IsOfClass(control, L"Static");
    if (!label && !IsOfClass(control, L"Button")) {
        return true;
    }
    const RECT area = InfoOf(control).rcWindow;
    const bool hasBox = !label && (GetWindowLongW(control, GWL_STYLE) & BS_TYPEMASK) > BS_DEFPUSHBUTTON;
    const LONG room = area.right - area.left - (hasBox ? GetSystemMetrics(SM_CXMENUCHECK) + 4 : 0);
    const platform::ScopedWindowContext screen(control);
    const platform::ScopedSelection font(screen.context,
                                         reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    RECT needed = {0, 0, room, 0};
    wchar_t text[400] = {};
    DrawTextW(screen.context, text, GetWindowTextW(control, text, 400), &needed,
              DT_CALCRECT | (label ? DT_WORDBREAK : DT_SINGLELINE));
    return needed.right <= room && needed.bottom <= area.bottom - area.top;
}

LRESULT CALLBACK FrameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == TODAYM_DRAWWATERMARK) {
        const auto& asked = *reinterpret_cast<const TODAYDRAWWATERMARKINFO*>(lParam);
        return FillRect(asked.hdc, &asked.rc, reinterpret_cast<HBRUSH>(GetClassLongPtrW(window, GCLP_HBRBACKGROUND)));
    }
    if (message == platform::kFrameKeyboardMessage) {
        keyboard += wParam != 0 ? '+' : '-';
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void RegisterFrameClass(const wchar_t* name, WNDPROC procedure, COLORREF ground) {
    WNDCLASSW frame = {};
    frame.lpfnWndProc = procedure;
    frame.hInstance = itemState.instance;
    frame.lpszClassName = name;
    frame.hbrBackground = CreateSolidBrush(ground);
    RegisterClassW(&frame);
}

}  // namespace

void UiTest::SetUp() {
    int width = 0;
    int height = 0;
    sscanf(GetParam(), "%dx%d", &width, &height);
    frame = CreateWindowExW(0, platform::kFrameClass, L"Today", WS_POPUP | WS_CLIPCHILDREN, 0, 0, width, height,
                            nullptr, nullptr, itemState.instance, nullptr);
    RefreshScreenSize();
    CreateWindowExW(0, platform::kTaskbarClass, nullptr, WS_CHILD | WS_VISIBLE, 0, 0, width, 26 * ScreenScale(), frame,
                    nullptr, itemState.instance, nullptr);
    ShowWindow(frame, SW_SHOW);
    RedrawWindow(frame, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

Texts UiTest::RunTool(uint32_t place, const std::vector<int>& answers, const Use& use) const {
    CreatePens();
    const auto scale = static_cast<uint32_t>(ScreenScale());
    const auto open = [&] {
        if (place == kOptions) {
            platform::RunDialog(itemState.instance, IDD_TODAY_OPTIONS, frame, CustomItemOptionsDlgProc);
        } else {
            DispatchTap(frame, place * scale, 10 * scale);
        }
    };
    return RunDialog(open, answers, use);
}

void UiTest::SaveScreen(const std::string& name) const {
    if (const char* folder = std::getenv("QUORVANE_SCREENSHOTS")) {
        // A Linux path is reached through drive Z:.
        const std::string path = std::string("Z:") + folder + "/" + name + "-" + GetParam() + ".bmp";
        EXPECT_TRUE(SavePicture(TakeScreenPicture(frame), std::wstring(path.begin(), path.end()).c_str()));
    }
}

void UiTest::ExpectReadable(HWND dialog, const std::wstring& texts, int cutControl) const {
    EXPECT_EQ(TextsOf(dialog), texts);
    RECT screen = InfoOf(frame).rcWindow;
    screen.top = InfoOf(platform::FindTaskbar()).rcWindow.bottom;
    EXPECT_TRUE(Contains(screen, InfoOf(dialog).rcWindow)) << "the dialog reaches beyond the screen";
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        const int id = GetDlgCtrlID(child);
        if (!IsWindowVisible(child)) {
            continue;
        }
        const bool whole = Contains(InfoOf(dialog).rcClient, InfoOf(child).rcWindow) && ShowsWholeText(child);
        EXPECT_TRUE(id == cutControl || whole) << id << " is cut or reaches beyond the dialog";
        for (HWND other = GetWindow(dialog, GW_CHILD); other != child; other = GetWindow(other, GW_HWNDNEXT)) {
            EXPECT_FALSE(Overlap(child, other)) << id << " overlaps " << GetDlgCtrlID(other);
        }
    }
}

}  // namespace ui

int main(int argumentCount, char** arguments) {
    testing::InitGoogleTest(&argumentCount, arguments);
    itemState.instance = GetModuleHandleW(nullptr);
    // As the Today host does for every plug-in.
    const INITCOMMONCONTROLSEX controls = {sizeof(controls), ICC_WIN95_CLASSES | ICC_DATE_CLASSES};
    InitCommonControlsEx(&controls);
    ui::RegisterFrameClass(platform::kFrameClass, ui::FrameProc, ui::kWatermark);
    ui::RegisterFrameClass(platform::kTaskbarClass, DefWindowProcW, ui::kTaskbar);
    return RUN_ALL_TESTS();
}
