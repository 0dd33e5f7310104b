// host/today_screen.h - the running Today screen: one frame, one item.
#pragma once

#include "host/command_line.h"
#include "host/screen_layout.h"
#include "host/today_item.h"

struct TodayScreen {
    HostOptions options;
    HWND frame = nullptr;
    HWND taskbar = nullptr;
    HBITMAP theme = nullptr;
    TodayItem item;
    bool pictureDue = false;  // asked for and not yet taken
    bool pictureFailed = false;
};

extern TodayScreen today;

// The places of the screen's parts at the item's present height.
ScreenLayout CurrentLayout();

// Opens frame and item, with the item's first refresh done. False when the library or its window cannot be had;
// `error` then says why and nothing is left open.
bool OpenTodayScreen(const HostOptions& options, std::wstring& error);

// Clears and unloads the item and closes the frame. False when the library would not go.
bool CloseTodayScreen();

// Handles messages until the run is ended.
void RunMessageLoop();

// Ends every message loop of the thread, those of open dialogs included, after taking a picture that is still due.
void EndRun();

void TakeDuePicture();

// One turn of the refresh cycle: the item is asked, and laid out and asked again when it changed its height.
void RefreshItem();

void SwitchItem(bool enabled);
