// wireless/card_details_dialog.h - "Wireless Card Details", filled once when it opens.
#pragma once

#include "platform/system.h"

INT_PTR CALLBACK WirelessDetailsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

// Writes the details into the dialog's controls. 0 when there is no wireless adapter.
int FillWirelessDetails(HWND dialog);
