// Messages to list views, with the records that they take.

#include "platform/list_view.h"

namespace platform {
namespace {

int CALLBACK CompareData(LPARAM first, LPARAM second, LPARAM) {
    return first > second ? 1 : 0;
}

}  // namespace

void InsertColumn(HWND list, int index, const wchar_t* heading, int width) {
    LVCOLUMNW column = {};
    column.mask = LVCF_FMT | LVCF_WIDTH | LVCF_SUBITEM | (heading != nullptr ? LVCF_TEXT : 0U);
    column.fmt = LVCFMT_LEFT;
    column.cx = width;
    column.pszText = const_cast<wchar_t*>(heading);
    column.iSubItem = index;
    SendMessageW(list, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&column));
}

void SetCell(HWND list, int row, int column, const wchar_t* text) {
    LVITEMW cell = {};
    cell.iSubItem = column;
    cell.pszText = const_cast<wchar_t*>(text);
    SendMessageW(list, LVM_SETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&cell));
}

void ReadCell(HWND list, int row, int column, std::span<wchar_t> text) {
    LVITEMW cell = {};
    cell.iSubItem = column;
    cell.pszText = text.data();
    cell.cchTextMax = static_cast<int>(text.size());
    text[0] = 0;
    SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&cell));
}

void SortRowsByData(HWND list) {
    SendMessageW(list, LVM_SORTITEMS, 0, reinterpret_cast<LPARAM>(CompareData));
}

}  // namespace platform
