// Scans and re-reads every five seconds for as long as the wireless device is usable. Rows keep their order of
// discovery.

#include "wireless/scanner_dialog.h"

#include "item/dialog_placement.h"
#include "item/item_state.h"
#include "platform/format_text.h"
#include "platform/icons.h"
#include "platform/list_view.h"
#include "resources/resource_ids.h"
#include "wireless/access_point_texts.h"
#include "wireless/access_points.h"

namespace {

constexpr UINT_PTR kTimerId = 7;
constexpr UINT kPeriodMs = 5000;
constexpr int kSignalImages = 10;

struct ScannerState {
    AccessPointTable table;
    bool timerRunning;
};
ScannerState state;

HWND List(HWND dialog) {
    return GetDlgItem(dialog, IDC_SCANNER_LIST);
}

void SetUpImages(HWND list) {
    constexpr int kImageWidth = 32;
    constexpr int kImageHeight = 16;
    HIMAGELIST images = ImageList_Create(kImageWidth, kImageHeight, ILC_COLOR32 | ILC_MASK, kSignalImages, 0);
    for (int i = 0; i < kSignalImages; ++i) {
        if (HICON icon = platform::LoadModuleIcon(itemState.instance, IDI_SCANNER_FIRST + i)) {
            ImageList_AddIcon(images, icon);
            DestroyIcon(icon);
        }
    }
    // The list view owns the images from here on.
    ListView_SetImageList(list, images, LVSIL_SMALL);
}

void SetUpColumns(HWND list) {
    constexpr int kImageWidth = 40;
    constexpr int kNameWidth = 160;
    platform::InsertColumn(list, 0, nullptr, kImageWidth);
    platform::InsertColumn(list, 1, nullptr, kNameWidth);
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
}

void InsertRow(HWND list, int row) {
    const AccessPoint& entry = state.table.entries[row];
    LVITEMW item = {};
    item.mask = LVIF_IMAGE | LVIF_STATE | LVIF_PARAM;
    item.iItem = row;
    item.iImage = SignalImage(entry);
    SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    wchar_t name[kSsidBytes + 1];
    FormatText(name, L"%S", entry.ssid);
    platform::SetCell(list, row, 1, name);
}

void SetImage(HWND list, int row) {
    LVITEMW item = {};
    item.mask = LVIF_IMAGE;
    item.iItem = row;
    item.iImage = SignalImage(state.table.entries[row]);
    SendMessageW(list, LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void ShowTexts(HWND dialog, const AccessPointTexts& texts) {
    SetDlgItemTextW(dialog, IDC_SCANNER_SIGNAL, texts.signal);
    SetDlgItemTextW(dialog, IDC_SCANNER_WEP, texts.wep);
    SetDlgItemTextW(dialog, IDC_SCANNER_ENTRY_BSSID, texts.bssid);
    SetDlgItemTextW(dialog, IDC_SCANNER_CHANNEL, texts.channel);
    SetDlgItemTextW(dialog, IDC_SCANNER_MODE, texts.mode);
    SetDlgItemTextW(dialog, IDC_SCANNER_TYPE, texts.type);
    if (texts.rates[0] != 0) {
        SetDlgItemTextW(dialog, IDC_SCANNER_RATES, texts.rates);
    }
}

// Details of the first selected row, if any.
void ShowSelected(HWND dialog) {
    const int row = ListView_GetNextItem(List(dialog), -1, LVNI_SELECTED);
    if (row < 0 || row >= state.table.count) {
        return;
    }
    AccessPointTexts texts;
    DescribeAccessPoint(state.table.entries[row], texts);
    ShowTexts(dialog, texts);
}

void ShowAssociation(HWND dialog, const ScanOutcome& outcome) {
    wchar_t text[kSsidBytes + 1];
    if (outcome.bssidChanged) {
        FormatMac(state.table.shownBssid, text);
        SetDlgItemTextW(dialog, IDC_SCANNER_BSSID, text);
    }
    if (outcome.ssidChanged) {
        FormatText(text, L"%S", state.table.shownSsid);
        SetDlgItemTextW(dialog, IDC_SCANNER_SSID, text);
    }
}

// True when the wireless device was usable.
bool RefreshAccessPoints(HWND dialog) {
    const int known = state.table.count;
    const ScanOutcome outcome = ScanAccessPoints(state.table);
    if (!outcome.usable) {
        return false;
    }
    ShowAssociation(dialog, outcome);
    HWND list = List(dialog);
    for (int row = known; row < state.table.count; ++row) {
        InsertRow(list, row);
    }
    for (int row = 0; row < state.table.count; ++row) {
        SetImage(list, row);
    }
    ShowSelected(dialog);
    return true;
}

void RefreshAndRestart(HWND dialog) {
    if (RefreshAccessPoints(dialog)) {
        state.timerRunning = SetTimer(dialog, kTimerId, kPeriodMs, nullptr) != 0;
    }
}

void StopTimer(HWND dialog) {
    KillTimer(dialog, kTimerId);
    state.timerRunning = false;
}

void OnInit(HWND dialog) {
    PlaceDialog(dialog, Placement::LandscapeBelowTaskbar);
    ResetAccessPoints(state.table);
    state.timerRunning = false;
    SetUpImages(List(dialog));
    SetUpColumns(List(dialog));
    RefreshAndRestart(dialog);
}

// A drop-down of this number is in neither template; where one is, a change of its selection shows the entry's details.
void OnSelection(HWND dialog) {
    const auto row = static_cast<int>(SendDlgItemMessageW(dialog, IDC_SCANNER_SELECTION, CB_GETCURSEL, 0, 0));
    if (row < 0 || row >= state.table.count) {
        return;
    }
    AccessPointTexts texts;
    DescribeSelectedAccessPoint(state.table.entries[row], texts);
    ShowTexts(dialog, texts);
}

INT_PTR OnCommand(HWND dialog, WPARAM wParam) {
    if (LOWORD(wParam) == IDC_SCANNER_SELECTION && HIWORD(wParam) == CBN_SELCHANGE) {
        OnSelection(dialog);
        return TRUE;
    }
    if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL) {
        return FALSE;
    }
    if (state.timerRunning) {
        StopTimer(dialog);
    }
    EndDialog(dialog, LOWORD(wParam));
    return TRUE;
}

}  // namespace

INT_PTR CALLBACK ScannerDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            OnInit(dialog);
            return TRUE;
        case WM_COMMAND:
            return OnCommand(dialog, wParam);
        case WM_NOTIFY: {
            const auto* notice = reinterpret_cast<const NMHDR*>(lParam);
            if (notice->idFrom == IDC_SCANNER_LIST && notice->code == NM_CLICK) {
                ShowSelected(dialog);
            }
            return 0;
        }
        case WM_TIMER:
            if (wParam != kTimerId) {
                return FALSE;
            }
            StopTimer(dialog);
            RefreshAndRestart(dialog);
            return TRUE;
        default:
            return FALSE;
    }
}
