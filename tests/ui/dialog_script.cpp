// A thread timer drives the script: its messages come only when nothing else waits, paints included, and in whatever
// modal loop runs at that moment.

#include <chrono>
#include <iostream>

#include "tests/ui/ui_test.h"

namespace ui {
namespace {

using Clock = std::chrono::steady_clock;

struct Script {
    const std::vector<Step>& steps;
    const std::vector<int>& answers;
    size_t nextStep = 0;
    HWND busyDialog = nullptr;    // the one that a step on the stack acts on
    HWND closedDialog = nullptr;  // the last one that OK was pressed on
    Clock::time_point deadline = Clock::now() + std::chrono::seconds(30);
    Texts messageBoxes = {};
};

Script* script = nullptr;

std::wstring WindowText(HWND window) {
    std::wstring text(static_cast<size_t>(GetWindowTextLengthW(window)), 0);
    GetWindowTextW(window, text.data(), static_cast<int>(text.size()) + 1);
    return text;
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

// The system makes message boxes and property sheets itself.
bool IsMessageBox(HWND dialog) {
    const auto owner = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(dialog, GWLP_HINSTANCE));
    return owner != GetModuleHandleW(nullptr) && FindWindowExW(dialog, nullptr, WC_TABCONTROLW, nullptr) == nullptr;
}

std::wstring Describe(HWND box) {
    std::wstring shown = WindowText(box) + L": ";
    for (HWND label = nullptr; (label = FindWindowExW(box, label, L"Static", nullptr)) != nullptr;) {
        shown += WindowText(label);
    }
    for (HWND label = nullptr; (label = FindWindowExW(box, label, L"Static", nullptr)) != nullptr;) {
        const auto icon = reinterpret_cast<HICON>(SendMessageW(label, STM_GETICON, 0, 0));
        shown += icon == LoadIconW(nullptr, IDI_QUESTION)  ? L" ?"
                 : icon == LoadIconW(nullptr, IDI_WARNING) ? L" !"
                                                           : L"";
    }
    if (GetDlgItem(box, IDYES) != nullptr) {
        return shown + L" Yes/No";
    }
    return GetDlgItem(box, IDOK) != nullptr && GetDlgItem(box, IDCANCEL) != nullptr ? shown + L" OK/Cancel" : shown;
}

void Answer(HWND box) {
    const size_t number = script->messageBoxes.size();
    script->messageBoxes.push_back(Describe(box));
    int button = number < script->answers.size() ? script->answers[number] : 0;
    if (GetDlgItem(box, button) == nullptr) {
        ADD_FAILURE() << "no answer " << button << " to " << testing::PrintToString(script->messageBoxes.back());
        button = GetDlgItem(box, IDCANCEL) != nullptr ? IDCANCEL : IDOK;
    }
    SendMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
}

void Advance() {
    HWND front = FrontDialog();
    if (Clock::now() > script->deadline) {
        std::cerr << "a dialog outlived the watchdog at step " << script->nextStep << std::endl;
        std::abort();
    }
    if (front == nullptr) {
        return;
    }
    if (IsMessageBox(front)) {
        Answer(front);
    } else if (front == script->busyDialog) {
        return;  // the step waits for something
    } else if (script->nextStep < script->steps.size()) {
        HWND outerDialog = std::exchange(script->busyDialog, front);
        script->steps[script->nextStep++](front);
        script->busyDialog = outerDialog;
    } else if (std::exchange(script->closedDialog, front) != front) {
        Press(front, IDOK);
    }
}

}  // namespace

Texts RunDialogScript(const std::function<void()>& open, const std::vector<Step>& steps,
                      const std::vector<int>& answers) {
    Script run{steps, answers};
    script = &run;
    const UINT_PTR timer = SetTimer(nullptr, 0, USER_TIMER_MINIMUM, [](HWND, UINT, UINT_PTR, DWORD) {
        if (script != nullptr) {
            Advance();
        }
    });
    open();
    KillTimer(nullptr, timer);
    script = nullptr;
    EXPECT_EQ(run.nextStep, steps.size()) << "the dialog ended (or never came) before its last step";
    EXPECT_EQ(run.messageBoxes.size(), answers.size()) << "message boxes shown and expected";
    return run.messageBoxes;
}

void WaitUntil(const std::function<bool()>& done) {
    const auto deadline = Clock::now() + std::chrono::seconds(15);
    while (!done()) {
        if (Clock::now() > deadline) {
            ADD_FAILURE() << "what the step waits for does not come";
            return;
        }
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
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

std::wstring TextOf(HWND dialog, int id) {
    HWND control = GetDlgItem(dialog, id);
    EXPECT_NE(control, nullptr) << "no control " << id;
    return WindowText(control);
}

Texts TextsOf(HWND dialog, const std::vector<int>& ids) {
    Texts texts;
    for (const int id : ids) {
        texts.push_back(TextOf(dialog, id));
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

Texts RowsOf(HWND list, int columns) {
    Texts rows(static_cast<size_t>(ListView_GetItemCount(list)));
    for (size_t row = 0; row < rows.size(); ++row) {
        for (int column = 0; column < columns; ++column) {
            wchar_t text[260] = {};
            ListView_GetItemText(list, static_cast<int>(row), column, text, 260);
            rows[row] += (column == 0 ? L"" : L"=") + std::wstring(text);
        }
    }
    return rows;
}

std::vector<int> ImagesOf(HWND list) {
    std::vector<int> images;
    for (int row = 0; row < ListView_GetItemCount(list); ++row) {
        LVITEMW item = {};
        item.mask = LVIF_IMAGE;
        item.iItem = row;
        SendMessageW(list, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        images.push_back(item.iImage);
    }
    return images;
}

void PickDate(HWND dialog, int picker, const SYSTEMTIME& date, DWORD validity) {
    NMDATETIMECHANGE change = {};
    change.nmhdr = {GetDlgItem(dialog, picker), static_cast<UINT_PTR>(picker), static_cast<UINT>(DTN_DATETIMECHANGE)};
    change.dwFlags = validity;
    change.st = date;
    if (validity == GDT_VALID) {
        SendDlgItemMessageW(dialog, picker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&change.st));
    }
    SendMessageW(dialog, WM_NOTIFY, static_cast<WPARAM>(picker), reinterpret_cast<LPARAM>(&change));
    UpdateWindow(dialog);
}

}  // namespace ui
