// wireless/signal_dialog.h - the "Signal" view: the current reading, its word and the last 40 readings.
#pragma once

#include "platform/system.h"

INT_PTR CALLBACK SignalDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
