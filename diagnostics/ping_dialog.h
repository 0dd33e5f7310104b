// diagnostics/ping_dialog.h - "Ping": one echo to a host that is picked from the list or typed.
#pragma once

#include "platform/system.h"

INT_PTR CALLBACK PingDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
