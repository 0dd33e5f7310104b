// diagnostics/detector_dialog.h - "Intruder Detector": the hosts of the local /24, strangers marked.
#pragma once

#include "platform/system.h"

INT_PTR CALLBACK DetectorDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
