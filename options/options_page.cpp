// Saves when the page is left, whichever way.

#include "options/options_page.h"

#include "item/item_state.h"
#include "item/taskbar_icon.h"
#include "options/general_settings.h"
#include "options/log_list_window.h"
#include "options/options_sheet.h"
#include "platform/controls.h"
#include "platform/format_text.h"
#include "resources/resource_ids.h"

namespace {

constexpr size_t kXLocationDigits = 3;

void SetCheck(HWND page, int id, bool checked) {
    SendDlgItemMessageW(page, id, BM_SETCHECK, checked ? BST_CHECKED : BST_UNCHECKED, 0);
}

bool IsChecked(HWND page, int id) {
    return SendDlgItemMessageW(page, id, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

// The up arrow lowers the value: its range runs from 639 down to 0.
void SetUpXLocation(HWND page) {
    constexpr LPARAM kCommonControlsVersion = 524;
    constexpr LPARAM kRange = 0x027F0000;
    SendDlgItemMessageW(page, IDC_OPTIONS_SPIN, CCM_SETVERSION, kCommonControlsVersion, 0);
    SendDlgItemMessageW(page, IDC_OPTIONS_SPIN, UDM_SETRANGE, 0, kRange);
    SendDlgItemMessageW(page, IDC_OPTIONS_SPIN, UDM_SETPOS, 0, static_cast<LPARAM>(itemState.xLocation));
    wchar_t text[12];
    FormatText(text, L"%d", itemState.xLocation);
    SetDlgItemTextW(page, IDC_OPTIONS_X_LOCATION, text);
    SendDlgItemMessageW(page, IDC_OPTIONS_X_LOCATION, EM_LIMITTEXT, kXLocationDigits, 0);
}

void OnInit(HWND page) {
    SetCheck(page, IDC_OPTIONS_SHOW_ICON, itemState.showTaskbarIcon);
    SetUpXLocation(page);
    SetCheck(page, itemState.amPmFormat ? IDC_OPTIONS_AM_PM : IDC_OPTIONS_MILITARY, true);
    SetUpLogList(GetDlgItem(page, IDC_OPTIONS_LOGS));
    FillLogList(GetDlgItem(page, IDC_OPTIONS_LOGS));
}

void OnSize(HWND page) {
    constexpr int kGroupMargin = 2;
    constexpr int kListMargin = 6;
    StretchToBottom(page, IDC_OPTIONS_LOG_GROUP, kGroupMargin);
    StretchToBottom(page, IDC_OPTIONS_LOGS, kListMargin);
}

void SaveXLocationOf(HWND page) {
    wchar_t text[kXLocationDigits + 1] = {};
    GetDlgItemTextW(page, IDC_OPTIONS_X_LOCATION, text, static_cast<int>(std::size(text)));
    const XLocationChoice choice = ReadXLocation(text);
    if (choice.differs) {
        RestoreUnderIcon(itemState.iconBackground);
        SaveXLocation(choice.place);
    }
}

void Save(HWND page) {
    SaveXLocationOf(page);
    SaveShowTaskbarIcon(IsChecked(page, IDC_OPTIONS_SHOW_ICON));
    SaveHourFormat(IsChecked(page, IDC_OPTIONS_AM_PM));
}

INT_PTR OnNotify(HWND page, const NMHDR& notice) {
    if (notice.code == PSN_KILLACTIVE) {
        Save(page);
        SetWindowLongPtrW(page, DWLP_MSGRESULT, 0);
        return TRUE;
    }
    if (notice.code == PSN_APPLY) {
        CloseOptions(page);
        return TRUE;
    }
    return FALSE;
}

INT_PTR OnCommand(HWND page, WORD id) {
    HWND list = GetDlgItem(page, IDC_OPTIONS_LOGS);
    switch (id) {
        case IDC_OPTIONS_DELETE_ALL:
            DeleteAllListedLogs(page, list);
            return TRUE;
        case IDC_OPTIONS_DELETE:
            DeleteSelectedLog(page, list);
            return TRUE;
        default:
            return FALSE;
    }
}

}  // namespace

INT_PTR CALLBACK OptionsPageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            OnInit(page);
            return TRUE;
        case WM_SIZE:
            OnSize(page);
            return TRUE;
        case WM_PAINT:
            PaintHeaderLine(page);
            return TRUE;
        case WM_CTLCOLORSTATIC:
            return ColorHeader(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
        case WM_COMMAND:
            return OnCommand(page, LOWORD(wParam));
        case WM_NOTIFY:
            return OnNotify(page, *reinterpret_cast<const NMHDR*>(lParam));
        default:
            return FALSE;
    }
}
