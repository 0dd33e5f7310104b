// adapters/adapter_details_dialog.h - the adapter details dialog (templates 114 and 503).
#pragma once

#include "platform/system.h"

INT_PTR CALLBACK AdapterDetailsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
