// trafficlog/export_dialog.h - asks for the range of dates and the file of a CSV export.
#pragma once

#include "platform/system.h"

// Template IDD_EXPORT.
INT_PTR CALLBACK ExportDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
