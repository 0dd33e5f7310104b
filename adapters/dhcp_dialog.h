// adapters/dhcp_dialog.h - the DHCP dialog (template 111).
#pragma once

#include "platform/system.h"

INT_PTR CALLBACK DhcpDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
