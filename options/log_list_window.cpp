// One row per log month; a row's data is its year and month as a number, by which the list is sorted.

#include "options/log_list_window.h"

#include "item/item_state.h"
#include "options/log_months.h"
#include "platform/controls.h"
#include "platform/format_text.h"

namespace {

void InsertColumn(HWND list, int index, const wchar_t* heading) {
    constexpr int kWidth = 75;
    LVCOLUMNW column = {};
    column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_TEXT | LVCF_SUBITEM;
    column.fmt = LVCFMT_LEFT;
    column.cx = kWidth * ScreenScale();
    column.pszText = const_cast<wchar_t*>(heading);
    column.iSubItem = index;
    SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

void InsertRow(HWND list, LogMonth& month) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT | LVIF_PARAM;
    item.iItem = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    item.pszText = month.year;
    item.lParam = month.Number();
    const auto row = static_cast<int>(SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item)));
    LVITEMW text = {};
    text.iSubItem = 1;
    text.pszText = month.month;
    SendMessageW(list, LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&text));
}

// Never negative.
int CALLBACK CompareMonths(LPARAM first, LPARAM second, LPARAM) {
    return first > second ? 1 : 0;
}

void ReadCell(HWND list, int row, int column, std::span<wchar_t> text) {
    LVITEMW item = {};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    text[0] = 0;
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
}

bool Confirm(HWND owner, const wchar_t* question) {
    return MessageBoxW(owner, question, L"Question", MB_OKCANCEL | MB_ICONQUESTION) == IDOK;
}

}  // namespace

void SetUpLogList(HWND list) {
    InsertColumn(list, 0, L"Year");
    InsertColumn(list, 1, L"Month");
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
    SendMessageW(list, LVM_SORTITEMS, 0, reinterpret_cast<LPARAM>(CompareMonths));
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
    ReadCell(list, row, 0, year);
    ReadCell(list, row, 1, month);
    wchar_t path[kPathUnits + 2 * kCellUnits + 8];
    LogMonthPath(year, month, path);
    wchar_t question[96];
    FormatText(question, L"Are you sure you want to delete %s/%s log data?", year, month);
    if (Confirm(page, question)) {
        DeleteFileW(path);
        FillLogList(list);
    }
}
