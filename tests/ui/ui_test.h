// tests/ui/ui_test.h - a Today screen of each size, whose client area is the screen, and modal dialogs over it, driven
// as a person would: the dialog runs in its own message loop while a test acts on it.
#pragma once

#include "host/picture.h"
#include "item/item_state.h"
#include "platform/controls.h"
#include "resources/resource_ids.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/data_folder.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace ui {

inline constexpr COLORREF kWatermark = RGB(200, 224, 240), kTaskbar = RGB(40, 60, 90);

// What a test does with an open dialog.
using Use = std::function<void(HWND dialog)>;
using Texts = std::vector<std::wstring>;

// Calls `open`, which runs a modal dialog, and `use` when that is shown and has painted; if it is open then, it is
// closed with OK. A message box is answered by the next of `answers` (IDOK, IDCANCEL, ...) instead of being shown, and
// described as "caption|text|style", the style as a hexadecimal number. One too many or too few is a failure.
Texts RunDialog(const std::function<void()>& open, const std::vector<int>& answers, const Use& use);

// Called before a message box is answered.
inline std::function<void()> duringMessageBox = [] {};

// '+' for each request to raise the soft keyboard, '-' to lower it.
inline std::string keyboard;

// Where the strip is tapped for a tool, in logical pixels.
inline constexpr uint32_t kOptions = 0, kLiveGraphTool = 10, kSignalTool = 55, kUsageTool = 75, kDhcpTool = 95,
                          kPingTool = 110, kAdapterTool = 130, kScannerTool = 150, kCardTool = 170, kDetectorTool = 190;

// A frame of the parameter's size with taskbar, alone on the screen; itemState knows the size from the start. The frame
// answers a watermark request with kWatermark.
class UiTest : public testing::TestWithParam<const char*> {
  protected:
    HWND frame = nullptr;

    static void SetUpTestSuite();
    void SetUp() override;
    void TearDown() override { DestroyWindow(frame); }

    // Opens a tool by a tap, or the options as the host does; see RunDialog.
    Texts RunTool(uint32_t place, const std::vector<int>& answers, const Use& use) const;

    // Paints what is pending, and writes what the screen shows to NAME-WIDTHxHEIGHT.bmp in the folder that the
    // environment variable QUORVANE_SCREENSHOTS names by a Linux path, if it does.
    void SaveScreen(const std::string& name) const;

    // Saves the screen and fails unless the dialog has those texts (see TextsOf) and lies on the screen and below the
    // taskbar, every control lies within the dialog, no two controls overlap (but group frames, which go around others,
    // and up-down arrows), and every label and button shows its whole text. `cutControl` may be cut at its edges.
    void ExpectReadable(HWND dialog, const std::string& picture, const std::wstring& texts, int cutControl = 0) const;
};

inline const auto kEveryScreen = testing::Values("240x320", "320x240", "480x640", "640x480", "480x480");

// Lets the dialog live (its timers, its threads' results) until `done` says so; a failure after 15 s.
void WaitUntil(const std::function<bool()>& done);

// Clicks the button, which must be there, shown and enabled.
void Press(HWND dialog, int id);

// The pen at a client point of the window, down and up at once.
void Tap(HWND window, int x, int y);

// The texts of those controls, or of all, in the template's order, each with "|" behind it. A list view has those of
// its rows: the image's number and the columns, with "|" between them and ";" at the end.
std::wstring TextsOf(HWND dialog, std::initializer_list<int> ids = {});

}  // namespace ui
