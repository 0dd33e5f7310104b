// One row per log month; a row's data is its year and month as a number, by which the list is sorted.

#include "options/log_list_window.h"

#include "item/item_state.h"
#include "options/log_months.h"
#include "platform/format_text.h"
#include "platform/list_view.h"

namespace {

void InsertRow(HWND list, LogMonth& month) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.iItem = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    item.pszText = month.year;
    item.lParam = month.Number();
    const auto row = static_cast<int>(SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
    platform::SetCell(list, row, 1, month.month);
}

bool Confirm(HWND owner, const wchar_t* question) {
    return MessageBoxW(owner, question, L"Question", MB_OKCANCEL | MB_ICONQUESTION) == IDOK;
}

}  // namespace

void SetUpLogList(HWND list) {
    constexpr int kWidth = 75;
    platform::InsertColumn(list, 0, L"Year", kWidth * ScreenScale());
    platform::InsertColumn(list, 1, L"Month", kWidth * ScreenScale());
    const LRESULT style = SendMessageW(list, LVM_GETEXTENDEDLISTVIEWSTYLE, 0, 0);
    SendMessageW(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, style | LVS_EX_FULLROWSELECT);
}

void FillLogList(HWND list) {
    LogSearch search;
    if (!search.Found()) {
        return;
    }
    SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
    while (const wchar_t* name = NextLogFile(search)) {
        LogMonth month;
        if (ParseLogName(name, month)) {
            InsertRow(list, month);
        }
    }
    platform::SortRowsByData(list);
}

void DeleteAllListedLogs(HWND page, HWND list) {
    MessageBeep(MB_ICONASTERISK);
    if (Confirm(page, L"Are you sure you want to delete ALL log data?")) {
        DeleteAllLogs();
        SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
    }
}

void DeleteSelectedLog(HWND page, HWND list) {
    constexpr size_t kCellUnits = 11;
    const auto row = static_cast<int>(SendMessageW(list, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    if (row < 0) {
        return;
    }
    wchar_t year[kCellUnits];
    wchar_t month[kCellUnits];
    platform::ReadCell(list, row, 0, year);
    platform::ReadCell(list, row, 1, month);
    wchar_t path[kPathUnits + 2 * kCellUnits + 8];
    LogMonthPath(year, month, path);
    wchar_t question[96];
    FormatText(question, L"Are you sure you want to delete %s/%s log data?", year, month);
    if (Confirm(page, question)) {
        DeleteFileW(path);
        FillLogList(list);
    }
}
