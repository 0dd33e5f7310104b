// The export runs while the dialog is on the screen; its end closes the dialog, whether a file came of it or not.

#include "item/dialog_placement.h"
#include "item/item_state.h"
#include "platform/controls.h"
#include "platform/date_picker.h"
#include "platform/dialogs.h"
#include "platform/format_text.h"
#include "platform/shell.h"
#include "resources/resource_ids.h"
#include "trafficlog/export.h"
#include "trafficlog/export_writer.h"

namespace {

constexpr int kLongestFileName = 254;

struct ExportDialog {
    ExportRange range;
    bool keyboardRaised;
};

ExportDialog state;

void SetPickerToToday(HWND dialog, int picker) {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    platform::SetDateFormat(GetDlgItem(dialog, picker), L"MMM' 'd','yyy");
    SendDlgItemMessageW(dialog, picker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&now));
}

void ProposeFile(HWND dialog) {
    wchar_t folder[MAX_PATH] = {};
    SHGetSpecialFolderPathW(dialog, folder, CSIDL_PERSONAL, FALSE);
    wchar_t path[MAX_PATH + 16];
    FormatText(path, L"%s\\export.csv", folder);
    SetDlgItemTextW(dialog, IDC_EXPORT_FILE, path);
    SendDlgItemMessageW(dialog, IDC_EXPORT_FILE, EM_LIMITTEXT, kLongestFileName, 0);
}

void OnInit(HWND dialog) {
    PlaceDialog(dialog, Placement::Centred);
    state = {{Today(), Today()}, false};
    SetPickerToToday(dialog, IDC_EXPORT_FROM);
    SetPickerToToday(dialog, IDC_EXPORT_TO);
    ProposeFile(dialog);
    platform::LowerKeyboard(dialog);
}

void OnDateChanged(const NMDATETIMECHANGE& change) {
    if (change.dwFlags != GDT_VALID) {
        return;
    }
    CalendarDate& date = change.nmhdr.idFrom == IDC_EXPORT_FROM ? state.range.from : state.range.to;
    date = {change.st.wYear, change.st.wMonth, change.st.wDay};
}

void LowerKeyboard(HWND dialog) {
    if (state.keyboardRaised) {
        platform::LowerKeyboard(dialog);
        state.keyboardRaised = false;
    }
}

// The focus request names a control that is not there: the focus leaves the buttons without entering anything, and the
// user taps where the text is to go.
void OnKeyboard(HWND dialog) {
    if (state.keyboardRaised) {
        LowerKeyboard(dialog);
        return;
    }
    platform::RaiseKeyboard(dialog);
    state.keyboardRaised = true;
    SetFocus(GetDlgItem(dialog, IDC_EXPORT_FOCUS));
}

void OnExport(HWND dialog) {
    if (!IsValidRange(state.range)) {
        MessageBoxW(dialog, L"Invalid date range!", L"Error", MB_ICONEXCLAMATION);
        return;
    }
    wchar_t path[kLongestFileName + 1] = {};
    GetDlgItemTextW(dialog, IDC_EXPORT_FILE, path, kLongestFileName + 1);
    ExportTraffic(path, state.range);
    LowerKeyboard(dialog);
    EndDialog(dialog, IDOK);
}

void OnCommand(HWND dialog, int control) {
    switch (control) {
        case IDC_EXPORT_KEYBOARD:
            OnKeyboard(dialog);
            break;
        case IDOK:
            OnExport(dialog);
            break;
        case IDCANCEL:
            LowerKeyboard(dialog);
            EndDialog(dialog, IDCANCEL);
            break;
    }
}

INT_PTR CALLBACK ExportDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            OnInit(dialog);
            return TRUE;
        case WM_COMMAND:
            OnCommand(dialog, LOWORD(wParam));
            return TRUE;
        case WM_NOTIFY:
            if (reinterpret_cast<const NMHDR*>(lParam)->code == DTN_DATETIMECHANGE) {
                OnDateChanged(*reinterpret_cast<const NMDATETIMECHANGE*>(lParam));
            }
            return TRUE;
        default:
            return FALSE;
    }
}

}  // namespace

void OpenExport(HWND owner) {
    platform::RunDialog(itemState.instance, IDD_EXPORT, owner, ExportDlgProc);
}
