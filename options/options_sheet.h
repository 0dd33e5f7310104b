// options/options_sheet.h - the item's options, which the Today settings open.
#pragma once

#include "platform/system.h"

// Export 241: the dialog procedure that the host runs over template 500.
extern "C" INT_PTR CALLBACK CustomItemOptionsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
