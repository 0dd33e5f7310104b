// A thread timer drives the script: its messages come only when nothing else waits, paints included, and in whatever
// modal loop runs at that moment. Message boxes are answered without being shown: the system's function is replaced.

#include <chrono>
#include <cstdlib>

#include "platform/format_text.h"
#include "tests/ui/ui_test.h"

namespace ui {
namespace {

struct Script {
    const std::vector<Step>& steps;
    const std::vector<int>& answers;
    size_t nextStep = 0;
    HWND busyDialog = nullptr;    // the one that a step on the stack acts on
    HWND closedDialog = nullptr;  // the last one that OK was pressed on
    Texts messageBoxes = {};
};

Script* script = nullptr;

// The one that is shown and takes input.
HWND FrontDialog() {
    HWND active = GetActiveWindow();
    return IsOfClass(active, L"#32770") && IsWindowVisible(active) && IsWindowEnabled(active) ? active : nullptr;
}

int WINAPI AnswerMessageBox(HWND owner, const wchar_t* text, const wchar_t* caption, UINT style) {
    EXPECT_EQ(GetAncestor(owner, GA_ROOT), FrontDialog());
    wchar_t shown[400];
    FormatText(shown, L"%s|%s|%X", caption, text, style);
    script->messageBoxes.push_back(shown);
    if (duringMessageBox) {
        duringMessageBox();
    }
    const size_t number = script->messageBoxes.size();
    return number <= script->answers.size() ? script->answers[number - 1] : IDCANCEL;
}

void Advance() {
    HWND front = FrontDialog();
    if (front == nullptr || front == script->busyDialog) {
        return;  // the step waits for something
    }
    if (script->nextStep < script->steps.size()) {
        HWND outerDialog = std::exchange(script->busyDialog, front);
        script->steps[script->nextStep++](front);
        script->busyDialog = outerDialog;
    } else if (std::exchange(script->closedDialog, front) != front) {
        Press(front, IDOK);
    }
}

}  // namespace

// What calls of it are linked to.
extern "C" {
decltype(&MessageBoxW) __imp_MessageBoxW = AnswerMessageBox;
}

std::function<void()> duringMessageBox;

Texts RunDialogScript(const std::function<void()>& open, const std::vector<Step>& steps,
                      const std::vector<int>& answers) {
    Script run{steps, answers};
    script = &run;
    const UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, [](HWND, UINT, UINT_PTR, DWORD) {
        if (script != nullptr) {
            Advance();
        }
    });
    // A dialog that does not close ends the program.
    const UINT_PTR watchdog = SetTimer(nullptr, 0, 120000, [](HWND, UINT, UINT_PTR, DWORD) { std::abort(); });
    open();
    KillTimer(nullptr, watchdog);
    KillTimer(nullptr, timer);
    script = nullptr;
    EXPECT_EQ(run.nextStep, steps.size()) << "the dialog ended (or never came) before its last step";
    EXPECT_EQ(run.messageBoxes.size(), answers.size()) << "message boxes shown and expected";
    return run.messageBoxes;
}

void WaitUntil(const std::function<bool()>& done) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(15);
    while (!done()) {
        if (std::chrono::steady_clock::now() > deadline) {
            ADD_FAILURE() << "what the step waits for does not come";
            return;
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            DispatchMessageW(&message);
        }
    }
}

void Press(HWND dialog, int id) {
    HWND button = GetDlgItem(dialog, id);
    EXPECT_TRUE(IsWindowVisible(button) && IsWindowEnabled(button)) << "button " << id << " cannot be clicked";
    SendMessageW(button, BM_CLICK, 0, 0);
}

void TapPixel(HWND window, int x, int y) {
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

std::vector<HWND> ChildrenOf(HWND window) {
    std::vector<HWND> children;
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        children.push_back(child);
    }
    return children;
}

std::wstring TextOf(HWND window) {
    wchar_t text[400] = {};
    GetWindowTextW(window, text, 400);
    return text;
}

std::wstring TextOf(HWND dialog, std::initializer_list<int> ids) {
    std::wstring texts;
    for (const int& id : ids) {
        HWND control = GetDlgItem(dialog, id);
        EXPECT_NE(control, nullptr) << "no control " << id;
        texts += (&id == ids.begin() ? L"" : L"|") + TextOf(control);
    }
    return texts;
}

void TypeInto(HWND dialog, int id, const std::wstring& text) {
    HWND control = GetDlgItem(dialog, id);
    control = IsOfClass(control, WC_COMBOBOXW) ? GetWindow(control, GW_CHILD) : control;
    SetFocus(control);
    SendMessageW(control, EM_SETSEL, 0, -1);
    SendMessageW(control, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
}

bool IsOfClass(HWND window, const wchar_t* name) {
    wchar_t found[64] = {};
    GetClassNameW(window, found, 64);
    return _wcsicmp(found, name) == 0;
}

Texts RowsOf(HWND dialog, int list) {
    HWND window = GetDlgItem(dialog, list);
    const int columns = Header_GetItemCount(ListView_GetHeader(window));
    Texts rows(static_cast<size_t>(ListView_GetItemCount(window)));
    for (size_t row = 0; row < rows.size(); ++row) {
        wchar_t text[260] = {};
        LVITEMW item = {};
        item.mask = LVIF_IMAGE;
        item.iItem = static_cast<int>(row);
        SendMessageW(window, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        rows[row] = std::to_wstring(item.iImage);
        for (int column = 0; column < columns; ++column) {
            ListView_GetItemText(window, item.iItem, column, text, 260);
            rows[row] += L"|" + std::wstring(text);
        }
    }
    return rows;
}

void PickDate(HWND dialog, int picker, WORD year, WORD month, WORD day) {
    NMDATETIMECHANGE change = {};
    change.nmhdr = {GetDlgItem(dialog, picker), static_cast<UINT_PTR>(picker), static_cast<UINT>(DTN_DATETIMECHANGE)};
    change.dwFlags = GDT_VALID;
    change.st = {year, month, 0, day, 0, 0, 0, 0};
    SendDlgItemMessageW(dialog, picker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&change.st));
    SendMessageW(dialog, WM_NOTIFY, static_cast<WPARAM>(picker), reinterpret_cast<LPARAM>(&change));
    UpdateWindow(dialog);
}

}  // namespace ui
