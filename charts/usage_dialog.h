// charts/usage_dialog.h - the logged traffic of a month or a day as chart or table.
#pragma once

#include "platform/system.h"

// Templates IDD_USAGE and IDD_USAGE_LANDSCAPE.
INT_PTR CALLBACK UsageDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
