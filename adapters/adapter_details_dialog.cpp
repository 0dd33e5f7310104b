// Fills itself once on opening; nothing in it can be changed.

#include "adapters/adapter_details_dialog.h"

#include "adapters/adapter_details.h"
#include "item/dialog_placement.h"
#include "item/item_state.h"
#include "platform/controls.h"
#include "resources/resource_ids.h"

namespace {

void OnInit(HWND dialog) {
    PlaceDialog(dialog, Placement::BelowTaskbar);
    AdapterDetails details;
    ReadAdapterDetails(itemState.screenWidth >= itemState.screenHeight, details);
    SetDlgItemTextW(dialog, IDC_ADAPTER_TITLE, details.title);
    SetDlgItemTextW(dialog, IDC_ADAPTER_MAC, details.hardwareAddress);
    SetDlgItemTextW(dialog, IDC_ADAPTER_TYPE, details.type);
    SetDlgItemTextW(dialog, IDC_ADAPTER_SPEED, details.speed);
    SetDlgItemTextW(dialog, IDC_ADAPTER_ADDRESS, details.address);
    SetDlgItemTextW(dialog, IDC_ADAPTER_MASK, details.mask);
    SetDlgItemTextW(dialog, IDC_ADAPTER_GATEWAY, details.gateway);
    SetDlgItemTextW(dialog, IDC_ADAPTER_DNS, details.dns);
    SetDlgItemTextW(dialog, IDC_ADAPTER_SECOND_DNS, details.secondDns);
    SetDlgItemTextW(dialog, IDC_ADAPTER_WINS, details.wins);
    SetDlgItemTextW(dialog, IDC_ADAPTER_SECOND_WINS, details.secondWins);
}

}  // namespace

INT_PTR CALLBACK AdapterDetailsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            OnInit(dialog);
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) {
                EndDialog(dialog, LOWORD(wParam));
                return TRUE;
            }
            return FALSE;
        default:
            return FALSE;
    }
}
