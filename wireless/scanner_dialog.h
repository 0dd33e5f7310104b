// wireless/scanner_dialog.h - "802.11 Scanner": the access points in range and the details of the selected one.
#pragma once

#include "platform/system.h"

INT_PTR CALLBACK ScannerDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
