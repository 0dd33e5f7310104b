// The log is read anew on every paint, so that traffic logged while the dialog is open shows at the next repaint.

#include "charts/usage_dialog.h"

#include "charts/usage_paint.h"
#include "charts/usage_view.h"
#include "item/dialog_placement.h"
#include "platform/controls.h"
#include "platform/date_picker.h"
#include "resources/resource_ids.h"
#include "trafficlog/export.h"

namespace {

UsageView view;

void SetDateFormat(HWND dialog) {
    const wchar_t* format = view.mode == UsageMode::Hourly ? L"MMM' 'd','yyy" : L"MMM','yyy";
    platform::SetDateFormat(GetDlgItem(dialog, IDC_USAGE_DATE), format);
}

void SetDateToToday(HWND dialog) {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    SendDlgItemMessageW(dialog, IDC_USAGE_DATE, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&now));
}

void FillModeList(HWND dialog) {
    SendDlgItemMessageW(dialog, IDC_USAGE_MODE, CB_RESETCONTENT, 0, 0);
    for (const wchar_t* mode : {L"Daily", L"Hourly"}) {
        SendDlgItemMessageW(dialog, IDC_USAGE_MODE, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(mode));
    }
    SendDlgItemMessageW(dialog, IDC_USAGE_MODE, CB_SETCURSEL, static_cast<WPARAM>(view.mode), 0);
}

void OnInit(HWND dialog) {
    PlaceDialog(dialog, Placement::BelowTaskbar);
    view = InitialUsageView();
    SetDateFormat(dialog);
    SetDateToToday(dialog);
    FillModeList(dialog);
}

void OnPaint(HWND dialog) {
    wchar_t title[48];
    FormatUsageTitle(view, title);
    SetDlgItemTextW(dialog, IDC_USAGE_TITLE, title);
    ReadUsage(view);
    PAINTSTRUCT paint;
    PaintUsage(dialog, BeginPaint(dialog, &paint), view);
    EndPaint(dialog, &paint);
}

void Perform(HWND dialog, UsageAction action) {
    if (action == UsageAction::Repaint) {
        InvalidateRect(dialog, nullptr, TRUE);
    } else if (action == UsageAction::OpenExport) {
        OpenExport(dialog);
    }
}

void OnDateChanged(HWND dialog, const NMDATETIMECHANGE& change) {
    if (change.dwFlags == GDT_VALID) {
        Perform(dialog, ChangeDate(view, {change.st.wYear, change.st.wMonth, change.st.wDay}));
    }
}

// The list's own notifications differ between systems; that it is dropped down is what tells a choice.
void OnModeCommand(HWND dialog) {
    if (SendDlgItemMessageW(dialog, IDC_USAGE_MODE, CB_GETDROPPEDSTATE, 0, 0) == FALSE) {
        return;
    }
    const LRESULT selected = SendDlgItemMessageW(dialog, IDC_USAGE_MODE, CB_GETCURSEL, 0, 0);
    const UsageAction action = ChangeMode(view, static_cast<UsageMode>(selected));
    if (action != UsageAction::Nothing) {
        SetDateFormat(dialog);
    }
    Perform(dialog, action);
}

}  // namespace

INT_PTR CALLBACK UsageDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            OnInit(dialog);
            return TRUE;
        case WM_PAINT:
            OnPaint(dialog);
            return TRUE;
        case WM_LBUTTONUP:
            Perform(dialog, TapUsage(view, LOWORD(lParam), HIWORD(lParam)));
            return TRUE;
        case WM_NOTIFY: {
            const auto* header = reinterpret_cast<const NMHDR*>(lParam);
            if (header->idFrom == IDC_USAGE_DATE && header->code == DTN_DATETIMECHANGE) {
                OnDateChanged(dialog, *reinterpret_cast<const NMDATETIMECHANGE*>(lParam));
            }
            return TRUE;
        }
        case WM_COMMAND:
            if (LOWORD(wParam) == IDC_USAGE_MODE) {
                OnModeCommand(dialog);
            } else if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL) {
                EndDialog(dialog, LOWORD(wParam));
            }
            return TRUE;
        default:
            return FALSE;
    }
}
