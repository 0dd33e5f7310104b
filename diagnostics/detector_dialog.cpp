// Starts scans and looks once a second for hosts that have answered since.

#include "diagnostics/detector_dialog.h"

#include "diagnostics/detector_list_window.h"
#include "diagnostics/own_address.h"
#include "item/dialog_placement.h"
#include "platform/atomics.h"
#include "resources/resource_ids.h"

namespace {

constexpr UINT_PTR kTimerId = 14;
constexpr UINT kPeriodMs = 1000;
constexpr int kWholeProgress = 100;

struct DetectorState {
    HIMAGELIST images;
};
DetectorState state;

HWND List(HWND dialog) {
    return GetDlgItem(dialog, IDC_DETECTOR_HOSTS);
}

void EnableExport(HWND dialog, bool enabled) {
    EnableWindow(GetDlgItem(dialog, IDC_DETECTOR_EXPORT), enabled);
}

void ShowProgress(HWND dialog, int percent) {
    SendDlgItemMessageW(dialog, IDC_DETECTOR_PROGRESS, PBM_SETPOS, static_cast<WPARAM>(percent), 0);
}

void OnInit(HWND dialog) {
    PlaceDialog(dialog, Placement::LandscapeBelowTaskbar);
    EnableExport(dialog, false);
    ReleaseScanTable();
    platform::AtomicExchange(&scanState.stopRequested, 0);
    state.images = SetUpDetectorList(List(dialog));
    ShowProgress(dialog, 0);
}

bool HasAddress() {
    char address[kAddressTextBytes];
    MacAddress mac;
    GetCurrentAdapterAddress(address, mac);
    return address[0] != 0;
}

void OnDetect(HWND dialog) {
    EnableExport(dialog, false);
    ShowProgress(dialog, 0);
    platform::AtomicExchange(&scanState.stopRequested, 0);
    if (!HasAddress()) {
        ReportNoAddress(dialog);
        return;
    }
    SendMessageW(List(dialog), LVM_DELETEALLITEMS, 0, 0);
    if (!StartScan(dialog)) {
        return;
    }
    SetCursor(LoadCursorW(nullptr, IDC_WAIT));
    SetTimer(dialog, kTimerId, kPeriodMs, nullptr);
}

void ListHost(HWND dialog, HostRecord& host) {
    constexpr DWORD kPauseMs = 100;  // lets a person follow the list as it grows
    Sleep(kPauseMs);
    DetectorRow row;
    DescribeHost(host, row);
    AddDetectorRow(List(dialog), row);
    host.listed = 1;
    EnableExport(dialog, true);
}

ScanProgress ListNewHosts(HWND dialog) {
    ScanProgress progress = {0, true};
    for (HostRecord& host : scanState.table->hosts) {
        const int32_t status = StatusOf(host);
        if (status == kHostPending) {
            progress.complete = false;
            continue;
        }
        ++progress.finished;
        if (status == kHostAnswered && host.listed == 0) {
            ListHost(dialog, host);
        }
    }
    return progress;
}

void OnPoll(HWND dialog) {
    KillTimer(dialog, kTimerId);
    if (scanState.table == nullptr) {  // a second scan found no memory for its table
        SetCursor(nullptr);
        return;
    }
    const ScanProgress progress = ListNewHosts(dialog);
    if (platform::AtomicExchange(&scanState.stopRequested, 0) != 0) {
        ShowProgress(dialog, kWholeProgress);
    } else {
        ShowProgress(dialog, progress.Percent());
        if (!progress.complete) {
            SetTimer(dialog, kTimerId, kPeriodMs, nullptr);
            return;
        }
    }
    SetCursor(nullptr);
    SortDetectorRows(List(dialog));
    ReleaseScanTable();
}

void OnTap(HWND dialog, int row) {
    if (row < 0) {
        return;
    }
    HWND list = List(dialog);
    DetectorCells cells = {};
    ReadDetectorCells(list, row, cells);
    RowMark mark = ReadRowMark(list, row);
    const DetectorImage before = mark.image;
    mark.image = ToggleSafe(dialog, cells, before);
    if (mark.image != before) {
        SetImageOfRow(list, mark);
    }
}

void OnExport(HWND dialog) {
    HWND list = List(dialog);
    const auto count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    ExportIntruderReport(dialog, scanState.ownMac, {count, ReadDetectorCells, list});
}

// Workers that are still running hold their table themselves.
void OnClose(HWND dialog, int result) {
    platform::AtomicExchange(&scanState.stopRequested, 1);
    ReleaseScanTable();
    if (state.images != nullptr) {
        // A list destroys the images that it has, so they are taken from it first.
        SendMessageW(List(dialog), LVM_SETIMAGELIST, LVSIL_SMALL, 0);
        ImageList_Destroy(state.images);
        state.images = nullptr;
    }
    SetCursor(nullptr);
    EndDialog(dialog, result);
}

INT_PTR OnCommand(HWND dialog, WORD id) {
    switch (id) {
        case IDC_DETECTOR_DETECT:
            OnDetect(dialog);
            return TRUE;
        case IDC_DETECTOR_EXPORT:
            OnExport(dialog);
            return TRUE;
        case IDOK:
        case IDCANCEL:
            OnClose(dialog, id);
            return TRUE;
        default:
            return FALSE;
    }
}

}  // namespace

INT_PTR CALLBACK DetectorDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            OnInit(dialog);
            return TRUE;
        case WM_COMMAND:
            return OnCommand(dialog, LOWORD(wParam));
        case WM_NOTIFY: {
            const auto* notice = reinterpret_cast<const NMLISTVIEW*>(lParam);
            if (notice->hdr.idFrom == IDC_DETECTOR_HOSTS && notice->hdr.code == NM_CLICK) {
                OnTap(dialog, notice->iItem);
            }
            return FALSE;
        }
        case WM_TIMER:
            if (wParam != kTimerId) {
                return FALSE;
            }
            OnPoll(dialog);
            return TRUE;
        default:
            return FALSE;
    }
}
