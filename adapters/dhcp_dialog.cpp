// Shows the lease, and runs its three buttons. All of them block the dialog until they are done.

#include "adapters/dhcp_dialog.h"

#include "adapters/dhcp_info.h"
#include "adapters/public_ip.h"
#include "item/dialog_placement.h"
#include "platform/controls.h"
#include "resources/resource_ids.h"

namespace {

constexpr wchar_t kDisabled[] = L"DHCP is not enabled.";

void ShowLease(HWND dialog, const DhcpInfo& info) {
    SetDlgItemTextW(dialog, IDC_DHCP_ADDRESS, info.address);
    SetDlgItemTextW(dialog, IDC_DHCP_SERVER, info.server);
    SetDlgItemTextW(dialog, IDC_DHCP_OBTAINED, info.obtained);
    SetDlgItemTextW(dialog, IDC_DHCP_EXPIRES, info.expires);
}

// False when there is no lease to release or renew. An adapter list that cannot be read leaves everything as it is.
bool FillDhcpInfo(HWND dialog) {
    DhcpInfo info;
    switch (ReadDhcpInfo(info)) {
        case DhcpState::Ready:
            SetDlgItemTextW(dialog, IDC_DHCP_TITLE, L"DHCP Information");
            ShowLease(dialog, info);
            return true;
        case DhcpState::Unreadable:
            return true;
        case DhcpState::Disabled:
            SetDlgItemTextW(dialog, IDC_DHCP_TITLE, kDisabled);
            return false;
        default:
            return false;
    }
}

void Refresh(HWND dialog) {
    if (!FillDhcpInfo(dialog)) {
        SetDlgItemTextW(dialog, IDC_DHCP_NOTICE, kDisabled);
        EnableWindow(GetDlgItem(dialog, IDC_DHCP_RELEASE), FALSE);
        EnableWindow(GetDlgItem(dialog, IDC_DHCP_RENEW), FALSE);
    }
}

void OnRelease(HWND dialog) {
    const LeaseResult result = ChangeLease(LeaseAction::Release);
    if (result == LeaseResult::Failed) {
        MessageBoxW(dialog, L"Release DHCP Address Error!", L"Error", 0);
    } else if (result == LeaseResult::Done) {
        ShowLease(dialog, {});
    }
}

void OnRenew(HWND dialog) {
    const LeaseResult result = ChangeLease(LeaseAction::Renew);
    if (result == LeaseResult::Failed) {
        MessageBoxW(dialog, L"Renew DHCP Address Error!", L"Error", 0);
    } else if (result == LeaseResult::Done) {
        MessageBoxW(dialog, L"DHCP IP address renewed. Please wait a few seconds to take it effect.", L"Infomation", 0);
        Refresh(dialog);
    }
}

void OnDetect(HWND dialog) {
    wchar_t address[kPublicIpUnits] = {};
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    SetDlgItemTextW(dialog, IDC_DHCP_REAL_ADDRESS, DetectPublicIpFromAny(address) ? address : L"");
    SetCursor(nullptr);
}

BOOL OnCommand(HWND dialog, int control) {
    switch (control) {
        case IDC_DHCP_RELEASE:
            OnRelease(dialog);
            return TRUE;
        case IDC_DHCP_RENEW:
            OnRenew(dialog);
            return TRUE;
        case IDC_DHCP_DETECT:
            OnDetect(dialog);
            return FALSE;
        case IDOK:
        case IDCANCEL:
            EndDialog(dialog, control);
            return TRUE;
        default:
            return FALSE;
    }
}

}  // namespace

INT_PTR CALLBACK DhcpDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            PlaceDialog(dialog, Placement::BelowTaskbar);
            Refresh(dialog);
            return TRUE;
        case WM_COMMAND:
            return OnCommand(dialog, LOWORD(wParam));
        default:
            return FALSE;
    }
}
