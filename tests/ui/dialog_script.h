// tests/ui/dialog_script.h - drives modal dialogs as a person would: the dialog runs in its own message loop while
// steps act on it one after the other.
#pragma once

#include "platform/controls.h"

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace ui {

// One act on the foremost dialog, called when that dialog is shown and has painted. A step that opens a second dialog
// (by pressing a button) stays on the stack until that one has ended; the next steps act on the second one meanwhile.
using Step = std::function<void(HWND dialog)>;

struct MessageBoxShown {
    std::wstring text;
    std::wstring caption;
    UINT flags;  // MB_... of its buttons and icon
};

// Calls `open`, which runs a modal dialog, and drives it by `steps`. Message boxes do not count as dialogs: each is
// answered by the next of `answers` (IDOK, IDCANCEL, ...) while the steps wait, and returned in order. It is a failure
// when the dialog ends before the last step, is still open after it, brings a message box too many or too few, or
// outlives the watchdog (then everything is closed).
std::vector<MessageBoxShown> RunDialogScript(const std::function<void()>& open, const std::vector<Step>& steps,
                                             const std::vector<int>& answers = {});

// Lets the dialog live (its timers, its threads' results) until `done` says so; false and a failure after the time-out.
bool WaitUntil(const std::function<bool()>& done, std::chrono::milliseconds timeout = std::chrono::seconds(10));

// Clicks the button, which must be there, shown and enabled. Without such a control it is the done button of a
// full-screen dialog: the command is sent alone.
void Press(HWND dialog, int id);

// The pen at a client point of the window: down and up at once.
void Tap(HWND window, int x, int y);

std::wstring TextOf(HWND dialog, int id);
void TypeInto(HWND dialog, int id, const std::wstring& text);  // replaces the text, with the notifications of typing
bool IsChecked(HWND dialog, int id);
bool IsShown(HWND dialog, int id);
bool IsEnabled(HWND dialog, int id);

// Chooses an entry of a combo box and notifies the dialog as a person's choice does.
void ChooseEntry(HWND dialog, int id, int index);

// Cell text of a list view.
std::wstring CellText(HWND list, int row, int column);

// A pixel of the window's client area, its children included.
COLORREF PixelAt(HWND window, int x, int y);

}  // namespace ui
