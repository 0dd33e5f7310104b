// host/today_item.h - the plug-in: its library, its record and its window.
#pragma once

#include "platform/today.h"

#include <string>

struct TodayItem {
    HMODULE library = nullptr;
    HWND (*initialize)(TODAYLISTITEM*, HWND) = nullptr;  // export 240
    DLGPROC optionsProcedure = nullptr;                  // export 241
    TODAYLISTITEM record = {};
};

// Loads the library, takes its exports and fills the record. False, with nothing loaded, when that fails; `error` then
// says why.
bool LoadItem(TodayItem& item, const std::wstring& library, std::wstring& error);

// Creates the item's window as a child of `parent`. False when the item refuses.
bool CreateItemWindow(TodayItem& item, HWND parent);

// Asks the item to refresh itself. True: it has changed record.cyp and wants to be asked again once it has that height.
bool QueryRefresh(TodayItem& item);

// Switches the item off (its cache is cleared, its window hidden) or on again.
void EnableItem(TodayItem& item, bool enabled);

// Runs the item's options over its own template. Returns when they are closed.
void RunItemOptions(const TodayItem& item, HWND owner);

// Clears the item's cache, destroys its window and unloads the library. True when the library is gone afterwards.
bool UnloadItem(TodayItem& item);
