// The frame is a captionless popup, so that its client area has exactly the asked size on any monitor. A thread timer
// drives a dialog: its messages come only when nothing else waits, paints included, and in whatever modal loop runs at
// that moment. Message boxes are answered without being shown: the system's function is replaced.

#include "tests/ui/ui_test.h"

#include <cstdlib>

#include "item/strip_paint.h"
#include "item/tap_dispatch.h"
#include "options/options_sheet.h"
#include "platform/desktop/today_frame.h"
#include "platform/dialogs.h"
#include "platform/format_text.h"
#include "platform/scoped_gdi.h"
#include "platform/screen.h"
#include "platform/today.h"

namespace ui {
namespace {

struct Script {
    std::vector<int> answers;
    Use use;
    bool busy = false;
    Texts messageBoxes = {};
} script;

bool IsOfClass(HWND window, const wchar_t* name) {
    wchar_t found[64] = {};
    GetClassNameW(window, found, 64);
    return _wcsicmp(found, name) == 0;
}

int WINAPI AnswerMessageBox(HWND, const wchar_t* text, const wchar_t* caption, UINT style) {
    wchar_t shown[400];
    FormatText(shown, L"%s|%s|%X", caption, text, style);
    script.messageBoxes.push_back(shown);
    duringMessageBox();
    const size_t number = script.messageBoxes.size();
    return number <= script.answers.size() ? script.answers[number - 1] : IDCANCEL;
}

void CALLBACK Advance(HWND, UINT, UINT_PTR, DWORD) {
    HWND front = GetActiveWindow();
    if (IsOfClass(front, L"#32770") && IsWindowVisible(front) && IsWindowEnabled(front) && !script.busy) {
        script.busy = true;
        script.use ? std::exchange(script.use, nullptr)(front) : Press(front, IDOK);
        script.busy = false;
    }
}

std::wstring TextOf(HWND control) {
    wchar_t text[400] = {};
    if (!IsOfClass(control, WC_LISTVIEWW)) {
        // Wine has a text of its own for the date that a picker shows.
        GetWindowTextW(control, text, IsOfClass(control, DATETIMEPICK_CLASSW) ? 0 : 400);
        return text;
    }
    std::wstring rows;
    LVITEMW item = {};
    item.mask = LVIF_IMAGE;
    for (; ListView_GetItem(control, &item); ++item.iItem) {
        rows += std::to_wstring(item.iImage);
        for (int column = 0; column < Header_GetItemCount(ListView_GetHeader(control)); ++column) {
            ListView_GetItemText(control, item.iItem, column, text, 400);
            rows += std::wstring(L"|") + text;
        }
        rows += L";";
    }
    return rows;
}

WINDOWINFO InfoOf(HWND window) {
    WINDOWINFO info = {};
    GetWindowInfo(window, &info);
    return info;
}

bool Contains(const RECT& outer, const RECT& inner) {
    RECT both = {};
    UnionRect(&both, &outer, &inner);
    return EqualRect(&both, &outer) != FALSE;
}

// A group frame stands around others, the arrows inside their field.
bool StandsAlone(HWND control) {
    const bool isGroup = IsOfClass(control, L"Button") && (InfoOf(control).dwStyle & BS_TYPEMASK) == BS_GROUPBOX;
    return IsWindowVisible(control) && !isGroup && !IsOfClass(control, UPDOWN_CLASSW);
}

// Measured with the control's own font.
bool CutsText(HWND control) {
    const bool button = IsOfClass(control, L"Button");
    const WINDOWINFO info = InfoOf(control);
    const bool hasBox = button && (info.dwStyle & BS_TYPEMASK) > BS_DEFPUSHBUTTON;
    const LONG room = info.rcWindow.right - info.rcWindow.left - (hasBox ? GetSystemMetrics(SM_CXMENUCHECK) + 4 : 0);
    const platform::ScopedWindowContext screen(control);
    const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0));
    const platform::ScopedSelection selectedFont(screen.context, font);
    RECT needed = {0, 0, room, 0};
    DrawTextW(screen.context, TextOf(control).c_str(), -1, &needed,
              DT_CALCRECT | (button ? DT_SINGLELINE : DT_WORDBREAK));
    return (button || IsOfClass(control, L"Static")) &&
           (needed.right > room || needed.bottom > info.rcWindow.bottom - info.rcWindow.top);
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

}  // namespace

// What calls of it are linked to.
extern "C" {
decltype(&MessageBoxW) __imp_MessageBoxW = AnswerMessageBox;
}

Texts RunDialog(const std::function<void()>& open, const std::vector<int>& answers, const Use& use) {
    script = {answers, use};
    const UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, Advance);
    open();
    KillTimer(nullptr, timer);
    EXPECT_FALSE(script.use) << "no dialog came";
    EXPECT_EQ(script.messageBoxes.size(), answers.size()) << "message boxes shown and expected";
    script.messageBoxes.resize(answers.size());
    return script.messageBoxes;
}

void UiTest::SetUpTestSuite() {
    itemState.instance = GetModuleHandleW(nullptr);
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = FrameProc;
    windowClass.hInstance = itemState.instance;
    for (const auto& [name, ground] :
         {std::pair(platform::kFrameClass, kWatermark), {platform::kTaskbarClass, kTaskbar}}) {
        windowClass.lpszClassName = name;
        windowClass.hbrBackground = CreateSolidBrush(ground);
        RegisterClassW(&windowClass);
    }
}

void UiTest::SetUp() {
    const int width = atoi(GetParam()), height = atoi(GetParam() + 4);
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
        place == kOptions
            ? void(platform::RunDialog(itemState.instance, IDD_TODAY_OPTIONS, frame, CustomItemOptionsDlgProc))
            : DispatchTap(frame, place * scale, 10 * scale);
    };
    return RunDialog(open, answers, use);
}

void UiTest::SaveScreen(const std::string& name) const {
    const Picture picture = TakeScreenPicture(frame);  // all is painted then, also when nobody wants to see it
    if (const char* folder = std::getenv("QUORVANE_SCREENSHOTS")) {
        const std::string path = std::string("Z:") + folder + "/" + name + "-" + GetParam() + ".bmp";
        EXPECT_TRUE(SavePicture(picture, std::wstring(path.begin(), path.end()).c_str()));
    }
}

void UiTest::ExpectReadable(HWND dialog, const std::string& picture, const std::wstring& texts, int cutControl) const {
    SaveScreen(picture);
    EXPECT_EQ(TextsOf(dialog), texts);
    RECT screen = InfoOf(frame).rcWindow;
    screen.top = InfoOf(platform::FindTaskbar()).rcWindow.bottom;
    EXPECT_TRUE(Contains(screen, InfoOf(dialog).rcWindow)) << "the dialog reaches beyond the screen";
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        const int id = GetDlgCtrlID(child);
        const RECT area = InfoOf(child).rcWindow;
        const bool whole = Contains(InfoOf(dialog).rcClient, area) && !CutsText(child);
        EXPECT_TRUE(whole || id == cutControl || !IsWindowVisible(child)) << id << " is cut";
        for (HWND other = GetWindow(child, GW_HWNDNEXT); other != nullptr; other = GetWindow(other, GW_HWNDNEXT)) {
            RECT common = InfoOf(other).rcWindow;
            EXPECT_FALSE(StandsAlone(child) && StandsAlone(other) && IntersectRect(&common, &common, &area))
                << id << " overlaps " << GetDlgCtrlID(other);
        }
    }
}

void WaitUntil(const std::function<bool()>& done) {
    const DWORD start = GetTickCount();
    while (!done()) {
        ASSERT_LT(GetTickCount() - start, 15000U) << "what the test waits for does not come";
        Sleep(10);
        for (MSG message; PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);) {
            DispatchMessageW(&message);
        }
    }
}

void Press(HWND dialog, int id) {
    HWND button = GetDlgItem(dialog, id);
    EXPECT_TRUE(IsWindowVisible(button) && IsWindowEnabled(button)) << "button " << id << " cannot be clicked";
    SendMessageW(button, BM_CLICK, 0, 0);
}

void Tap(HWND window, int x, int y) {
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

std::wstring TextsOf(HWND dialog, std::initializer_list<int> ids) {
    std::wstring texts;
    for (HWND child = GetWindow(dialog, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        if (ids.size() == 0 || std::ranges::count(ids, GetDlgCtrlID(child)) != 0) {
            texts += TextOf(child) + L"|";
        }
    }
    return texts;
}

}  // namespace ui
