// Shows the radio settings. The dialog closes by OK alone.

#include "wireless/card_details_dialog.h"

#include "item/dialog_placement.h"
#include "platform/controls.h"
#include "resources/resource_ids.h"
#include "wireless/card_details.h"

int FillWirelessDetails(HWND dialog) {
    CardDetails details;
    if (!ReadCardDetails(details)) {
        return 0;
    }
    SetDlgItemTextW(dialog, IDC_WIRELESS_BEACON, details.beacon);
    SetDlgItemTextW(dialog, IDC_WIRELESS_ATIM, details.atimWindow);
    SetDlgItemTextW(dialog, IDC_WIRELESS_FREQUENCY, details.frequency);
    SetDlgItemTextW(dialog, IDC_WIRELESS_CHANNEL, details.channel);
    SetDlgItemTextW(dialog, IDC_WIRELESS_AUTHENTICATION, details.authentication);
    SetDlgItemTextW(dialog, IDC_WIRELESS_MODE, details.mode);
    SetDlgItemTextW(dialog, IDC_WIRELESS_NETWORK_TYPE, details.networkType);
    SetDlgItemTextW(dialog, IDC_WIRELESS_WEP, details.wep);
    return 1;
}

INT_PTR CALLBACK WirelessDetailsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            PlaceDialog(dialog, Placement::BelowTaskbar);
            FillWirelessDetails(dialog);
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) != IDOK) {
                return FALSE;
            }
            EndDialog(dialog, IDOK);
            return TRUE;
        default:
            return FALSE;
    }
}
