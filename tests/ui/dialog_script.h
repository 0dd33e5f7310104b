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
    UINT flags = MB_OK;  // MB_... of its buttons and icon

    bool operator==(const MessageBoxShown&) const = default;
};
using Boxes = std::vector<MessageBoxShown>;
void PrintTo(const MessageBoxShown& box, std::ostream* stream);

// Calls `open`, which runs a modal dialog, and drives it by `steps`; a dialog that is open after the last one is closed
// with OK. Message boxes do not count as dialogs: each is answered by the next of `answers` (IDOK, IDCANCEL, ...) while
// the steps wait, and returned in order. It is a failure when the dialog ends before the last step, does not close with
// OK, brings a message box too many or too few, or outlives the watchdog (then everything is closed).
Boxes RunDialogScript(const std::function<void()>& open, const std::vector<Step>& steps,
                      const std::vector<int>& answers = {});

// Lets the dialog live (its timers, its threads' results) until `done` says so; a failure after the time-out.
void WaitUntil(const std::function<bool()>& done, std::chrono::seconds timeout = std::chrono::seconds(15));

// Clicks the button, which must be there, shown and enabled.
void Press(HWND dialog, int id);

// The pen at a client point of the window: down and up at once.
void Tap(HWND window, int x, int y);

using Texts = std::vector<std::wstring>;
std::wstring TextOf(HWND dialog, int id);
Texts TextsOf(HWND dialog, const std::vector<int>& ids);
void TypeInto(HWND dialog, int id, const std::wstring& text);  // replaces the text, with the notifications of typing
inline bool IsEnabled(HWND dialog, int id) {
    return IsWindowEnabled(GetDlgItem(dialog, id)) != FALSE;
}
bool IsOfClass(HWND window, const wchar_t* name);

// A list view's columns, "=" between them, row by row; and the rows' images.
Texts RowsOf(HWND list, int columns);
std::vector<int> ImagesOf(HWND list);

// A pixel of the window's client area, its children included.
COLORREF PixelAt(HWND window, int x, int y);

}  // namespace ui
