// A thread timer drives a dialog: its messages come only when nothing else waits, paints included, and in whatever
// modal loop runs at that moment. Message boxes are answered without being shown: the system's function is replaced.

#include "tests/ui/ui_test.h"

#include "platform/format_text.h"

namespace ui {
namespace {

struct Script {
    std::vector<int> answers;
    Use use;
    bool busy = false;
    Texts messageBoxes = {};
};

Script script;

// The one that is shown and takes input.
HWND FrontDialog() {
    HWND active = GetActiveWindow();
    return IsOfClass(active, L"#32770") && IsWindowVisible(active) && IsWindowEnabled(active) ? active : nullptr;
}

int WINAPI AnswerMessageBox(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style) {
    EXPECT_EQ(GetAncestor(owner, GA_ROOT), FrontDialog());
    wchar_t shown[400];
    FormatText(shown, L"%s|%s|%X", caption, text, style);
    const size_t number = script.messageBoxes.size();
    script.messageBoxes.push_back(shown);
    duringMessageBox();
    return number < script.answers.size() ? script.answers[number] : IDCANCEL;
}

void CALLBACK Advance(HWND, UINT, UINT_PTR, DWORD) {
    HWND front = FrontDialog();
    if (front != nullptr && !script.busy) {
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
    return script.messageBoxes;
}

void WaitUntil(const std::function<bool()>& done) {
    const DWORD start = GetTickCount();
    while (!done()) {
        ASSERT_LT(GetTickCount() - start, 15000U) << "what the test waits for does not come";
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
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

void TapRow(HWND dialog, int list, int row) {
    RECT area = {};
    ListView_GetItemRect(GetDlgItem(dialog, list), row, &area, LVIR_BOUNDS);
    Tap(GetDlgItem(dialog, list), area.left + 45 * ScreenScale(), (area.top + area.bottom) / 2);
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

bool IsOfClass(HWND window, const wchar_t* name) {
    wchar_t found[64] = {};
    GetClassNameW(window, found, 64);
    return _wcsicmp(found, name) == 0;
}

}  // namespace ui
