// A thread timer drives the script: its messages come only when nothing else waits, paints included, and in whatever
// modal loop runs at that moment.

#include "tests/ui/dialog_script.h"

#include <gtest/gtest.h>

namespace ui {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::seconds kWatchdog(30);

struct Script {
    const std::vector<Step>& steps;
    const std::vector<int>& answers;
    size_t nextStep = 0;
    HWND busyDialog = nullptr;  // the one that a step on the stack acts on
    Clock::time_point deadline = Clock::now() + kWatchdog;
    bool abandoned = false;
    std::vector<MessageBoxShown> messageBoxes = {};
};

Script* script = nullptr;

std::wstring WindowText(HWND window) {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)), 0);
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    return text;
}

bool IsOfClass(HWND window, const wchar_t* wanted) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return wcscmp(name, wanted) == 0;
}

// The foremost dialog or message box, if it is shown and takes input.
HWND FrontDialog() {
    HWND front = nullptr;
    const auto takeFirst = [](HWND window, LPARAM result) -> BOOL {
        if (!IsOfClass(window, L"#32770") || !IsWindowVisible(window) || !IsWindowEnabled(window)) {
            return TRUE;
        }
        *reinterpret_cast<HWND*>(result) = window;
        return FALSE;
    };
    EnumThreadWindows(GetCurrentThreadId(), takeFirst, reinterpret_cast<LPARAM>(&front));
    return front;
}

bool IsPropertySheet(HWND dialog) {
    return FindWindowExW(dialog, nullptr, WC_TABCONTROLW, nullptr) != nullptr;
}

// The system makes message boxes and property sheets itself.
bool IsMessageBox(HWND dialog) {
    const auto owner = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(dialog, GWLP_HINSTANCE));
    return owner != GetModuleHandleW(nullptr) && !IsPropertySheet(dialog);
}

UINT IconFlagOf(HICON icon) {
    const std::pair<const wchar_t*, UINT> kinds[] = {{IDI_EXCLAMATION, MB_ICONEXCLAMATION},
                                                     {IDI_HAND, MB_ICONHAND},
                                                     {IDI_QUESTION, MB_ICONQUESTION},
                                                     {IDI_ASTERISK, MB_ICONASTERISK}};
    for (const auto& [name, flag] : kinds) {
        if (LoadIconW(nullptr, name) == icon) {
            return flag;
        }
    }
    return 0;
}

UINT ButtonFlagsOf(HWND box) {
    const auto has = [box](int id) { return GetDlgItem(box, id) != nullptr; };
    if (has(IDYES)) {
        return has(IDCANCEL) ? MB_YESNOCANCEL : MB_YESNO;
    }
    if (has(IDRETRY)) {
        return has(IDCANCEL) ? MB_RETRYCANCEL : MB_ABORTRETRYIGNORE;
    }
    return has(IDOK) && has(IDCANCEL) ? MB_OKCANCEL : MB_OK;
}

MessageBoxShown Describe(HWND box) {
    MessageBoxShown shown = {L"", WindowText(box), ButtonFlagsOf(box)};
    HWND label = nullptr;
    while ((label = FindWindowExW(box, label, L"Static", nullptr)) != nullptr) {
        if ((GetWindowLongW(label, GWL_STYLE) & SS_TYPEMASK) == SS_ICON) {
            shown.flags |= IconFlagOf(reinterpret_cast<HICON>(SendMessageW(label, STM_GETICON, 0, 0)));
        } else {
            shown.text += WindowText(label);
        }
    }
    return shown;
}

void Answer(HWND box) {
    script->messageBoxes.push_back(Describe(box));
    const MessageBoxShown& shown = script->messageBoxes.back();
    const size_t number = script->messageBoxes.size();
    int button = IDCANCEL;
    if (number <= script->answers.size()) {
        button = script->answers[number - 1];
        EXPECT_NE(GetDlgItem(box, button), nullptr) << "the message box has no button " << button;
    } else {
        const std::string text(shown.text.begin(), shown.text.end());
        ADD_FAILURE() << "a message box nobody expected: " << text;
    }
    SendMessageW(box, WM_COMMAND, static_cast<WPARAM>(GetDlgItem(box, button) != nullptr ? button : IDOK), 0);
}

void Abandon(HWND front, const char* reason) {
    if (!script->abandoned) {
        ADD_FAILURE() << reason << " (step " << script->nextStep << " of " << script->steps.size() << ")";
    }
    script->abandoned = true;
    if (IsPropertySheet(front)) {
        SendMessageW(front, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
    } else {
        EndDialog(front, -1);
    }
}

void Advance() {
    HWND front = FrontDialog();
    if (front == nullptr) {
        return;
    }
    if (script->abandoned || Clock::now() > script->deadline) {
        Abandon(front, "the dialog outlived the watchdog");
    } else if (IsMessageBox(front)) {
        Answer(front);
    } else if (front == script->busyDialog) {
        return;  // the step waits for something
    } else if (script->nextStep == script->steps.size()) {
        Abandon(front, "the dialog is still open after the last step");
    } else {
        HWND outerDialog = script->busyDialog;
        script->busyDialog = front;
        script->steps[script->nextStep++](front);
        script->busyDialog = outerDialog;
    }
}

void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD) {
    if (script != nullptr) {
        Advance();
    }
}

}  // namespace

std::vector<MessageBoxShown> RunDialogScript(const std::function<void()>& open, const std::vector<Step>& steps,
                                             const std::vector<int>& answers) {
    Script run{steps, answers};
    script = &run;
    const UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, OnTimer);
    open();
    KillTimer(nullptr, timer);
    script = nullptr;
    if (!run.abandoned) {
        EXPECT_EQ(run.nextStep, steps.size()) << "the dialog ended (or never came) before its last step";
        EXPECT_EQ(run.messageBoxes.size(), answers.size()) << "message boxes shown and expected";
    }
    return run.messageBoxes;
}

bool WaitUntil(const std::function<bool()>& done, std::chrono::milliseconds timeout) {
    const auto deadline = Clock::now() + timeout;
    while (!done()) {
        if (Clock::now() > deadline) {
            ADD_FAILURE() << "what the step waits for does not come";
            return false;
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
    return true;
}

void Press(HWND dialog, int id) {
    HWND button = GetDlgItem(dialog, id);
    if (button == nullptr) {
        SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(id), 0);
        return;
    }
    EXPECT_TRUE(IsWindowVisible(button)) << "button " << id << " is hidden";
    EXPECT_TRUE(IsWindowEnabled(button)) << "button " << id << " is disabled";
    SendMessageW(button, BM_CLICK, 0, 0);
}

void Tap(HWND window, int x, int y) {
    SendMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    SendMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

std::wstring TextOf(HWND dialog, int id) {
    HWND control = GetDlgItem(dialog, id);
    EXPECT_NE(control, nullptr) << "no control " << id;
    return WindowText(control);
}

void TypeInto(HWND dialog, int id, const std::wstring& text) {
    HWND control = GetDlgItem(dialog, id);
    if (IsOfClass(control, WC_COMBOBOXW)) {
        control = GetWindow(control, GW_CHILD);
    }
    SetFocus(control);
    SendMessageW(control, EM_SETSEL, 0, -1);
    SendMessageW(control, EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(text.c_str()));
}

bool IsChecked(HWND dialog, int id) {
    return SendDlgItemMessageW(dialog, id, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

bool IsShown(HWND dialog, int id) {
    return IsWindowVisible(GetDlgItem(dialog, id)) != FALSE;
}

bool IsEnabled(HWND dialog, int id) {
    return IsWindowEnabled(GetDlgItem(dialog, id)) != FALSE;
}

void ChooseEntry(HWND dialog, int id, int index) {
    HWND combo = GetDlgItem(dialog, id);
    SendMessageW(combo, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
    SendMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(MAKELONG(id, CBN_SELCHANGE)), reinterpret_cast<LPARAM>(combo));
}

std::wstring CellText(HWND list, int row, int column) {
    wchar_t text[260] = {};
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = text;
    item.cchTextMax = 260;
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return text;
}

COLORREF PixelAt(HWND window, int x, int y) {
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    // A cached context reaches the children; the window's own may clip them away.
    HDC context = GetDCEx(window, nullptr, DCX_CACHE);
    const COLORREF color = GetPixel(context, x, y);
    ReleaseDC(window, context);
    return color;
}

}  // namespace ui
