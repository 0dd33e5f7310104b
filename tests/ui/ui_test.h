// tests/ui/ui_test.h - a Today screen of each size, whose client area is the screen, and modal dialogs over it, driven
// as a person would: the dialog runs in its own message loop while steps act on it one after the other.
#pragma once

#include "item/item_state.h"
#include "item/strip_paint.h"
#include "item/tap_dispatch.h"
#include "platform/controls.h"
#include "platform/today.h"

#include "host/picture.h"
#include "resources/resource_ids.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/data_folder.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace ui {

inline constexpr COLORREF kWatermark = RGB(200, 224, 240);
inline constexpr COLORREF kTaskbar = RGB(40, 60, 90);
inline constexpr COLORREF kRed = RGB(255, 0, 0);
inline constexpr COLORREF kGreen = RGB(0, 255, 0);
inline constexpr COLORREF kBlue = RGB(0, 0, 255);
inline constexpr COLORREF kBlack = RGB(0, 0, 0);

// One act on the foremost dialog, called when that dialog is shown and has painted. A step that opens a second dialog
// (by pressing a button) stays on the stack until that one has ended; the next steps act on the second one meanwhile.
using Step = std::function<void(HWND dialog)>;

using Texts = std::vector<std::wstring>;

// Calls `open`, which runs a modal dialog, and drives it by `steps`; a dialog that is open after the last one is closed
// with OK. A message box is answered by the next of `answers` (IDOK, IDCANCEL, ...) instead of being shown, and
// described as "caption|text|style", the style as a hexadecimal number. It is a failure when the dialog ends before the
// last step or brings a message box too many or too few.
Texts RunDialogScript(const std::function<void()>& open, const std::vector<Step>& steps,
                      const std::vector<int>& answers);

// Called before a message box is answered.
extern std::function<void()> duringMessageBox;

// Where the strip is tapped for a tool, in logical pixels.
inline constexpr uint32_t kLiveGraphTool = 10, kSignalTool = 55, kUsageTool = 75, kDhcpTool = 95, kPingTool = 110,
                          kAdapterTool = 130, kScannerTool = 150, kCardTool = 170, kDetectorTool = 190;

// A frame of the parameter's size with taskbar, alone on the screen; itemState knows the size from the start. The frame
// answers a watermark request with kWatermark.
class UiTest : public testing::TestWithParam<const char*> {
  protected:
    HWND frame = nullptr;
    std::string keyboard;  // '+' for each request to raise the soft keyboard, '-' to lower it

    void SetUp() override;
    void TearDown() override { DestroyWindow(frame); }

    // Opens a tool by a tap and drives it; see RunDialogScript.
    template <class... Steps>
    Texts RunTool(uint32_t place, const std::vector<int>& answers, const Steps&... steps) const {
        CreatePens();
        const auto scale = static_cast<uint32_t>(ScreenScale());
        return RunDialogScript([&] { DispatchTap(frame, place * scale, 10 * scale); }, {steps...}, answers);
    }

    // Writes what the screen shows now to NAME-WIDTHxHEIGHT.bmp in the folder that the environment variable
    // QUORVANE_SCREENSHOTS names (a Linux path will do). Does nothing without the variable.
    void SaveScreen(const std::string& name) const;

    // Fails unless the dialog lies on the screen and below the taskbar, every control lies within the dialog, no two
    // controls overlap (but group frames, which go around others, and up-down arrows), and every label and button shows
    // its whole text. `cutControl` is one that may be cut at its right or lower edge.
    void ExpectReadable(HWND dialog, int cutControl = 0) const;

  private:
    static LRESULT CALLBACK FrameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
};

// For INSTANTIATE_TEST_SUITE_P.
inline const auto kEveryScreen = testing::Values("240x320", "320x240", "480x640", "640x480", "480x480");

inline int FrameTaskbarHeight() {
    return 26 * ScreenScale();
}

// Paints over whatever the window and its children show there.
void FillWindow(HWND window, const RECT& area, COLORREF color);

// A drawing on a plain ground of that size.
Picture Drawn(SIZE size, COLORREF ground, const std::function<void(HDC)>& draw);

// Whether the picture has all pixels of the part at that place.
bool IsAt(const Picture& picture, int x, int y, const Picture& part);

// What pixels show, from one place on in one direction: R, G or B for the pure colour, K for black, '.' for any other.
std::string Colors(const Picture& picture, int x, int y, int stepX, int stepY, int count);

// Lets the dialog live (its timers, its threads' results) until `done` says so; a failure after 15 s.
void WaitUntil(const std::function<bool()>& done);

// Clicks the button, which must be there, shown and enabled.
void Press(HWND dialog, int id);

// The pen at a client point of the window, down and up at once, in pixels; Tap in logical ones.
void TapPixel(HWND window, int x, int y);
inline void Tap(HWND dialog, int x, int y) {
    TapPixel(dialog, x * ScreenScale(), y * ScreenScale());
}

std::vector<HWND> ChildrenOf(HWND window);
std::wstring TextOf(HWND window);
std::wstring TextOf(HWND dialog, std::initializer_list<int> ids);  // with "|" between them
void TypeInto(HWND dialog, int id, const std::wstring& text);  // replaces the text, with the notifications of typing
inline bool IsEnabled(HWND dialog, int id) {
    return IsWindowEnabled(GetDlgItem(dialog, id)) != FALSE;
}
bool IsOfClass(HWND window, const wchar_t* name);

// The rows of a list view: number of the image, and the columns, with "|" between them.
Texts RowsOf(HWND dialog, int list);

// Sets a date picker as a person does: the value and its notification.
void PickDate(HWND dialog, int picker, WORD year, WORD month, WORD day);

}  // namespace ui
