// item/item_window.h - the window that the Today screen hosts.
#pragma once

#include "platform/today.h"

inline constexpr wchar_t kItemWindowClass[] = L"QUORVANECLASS";

// Registers the window class anew. False when the system refuses.
bool RegisterItemWindowClass();
void UnregisterItemWindowClass();

// Sets every field of itemState from its defaults, the screen and the registry.
void InitializeItem();

// Export 240: the item's window as a child of `parent`, or null when the item is disabled.
extern "C" HWND InitializeCustomItem(TODAYLISTITEM* item, HWND parent);
