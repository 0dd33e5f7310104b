// Both pages only show; nothing on them is saved.

#include "options/adapter_page.h"

#include "item/item_state.h"
#include "options/adapter_properties.h"
#include "options/options_sheet.h"
#include "platform/list_view.h"
#include "resources/resource_ids.h"

namespace {

void InsertRow(HWND list, int index, const AdapterProperty& property) {
    LVITEMW item = {};
    item.mask = LVIF_TEXT;
    item.iItem = index;
    item.pszText = const_cast<wchar_t*>(property.item);
    SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    platform::SetCell(list, index, 1, property.value);
}

// FALSE when a control is missing: the focus is then not the page's to set.
BOOL FillPage(HWND page) {
    constexpr int kItemWidth = 80;
    constexpr int kValueWidth = 140;
    HWND choice = GetDlgItem(page, IDC_ADAPTER_PAGE_ADAPTER);
    HWND list = GetDlgItem(page, IDC_ADAPTER_PAGE_LIST);
    if (choice == nullptr || list == nullptr) {
        return FALSE;
    }
    SendMessageW(list, LVM_DELETEALLITEMS, 0, 0);
    platform::InsertColumn(list, 0, L"Item", kItemWidth * ScreenScale());
    platform::InsertColumn(list, 1, L"Value", kValueWidth * ScreenScale());
    SendMessageW(choice, CB_RESETCONTENT, 0, 0);
    AdapterProperty properties[kMostAdapterProperties];
    const int count = ReadAdapterProperties(properties);
    if (count < 0) {
        return TRUE;
    }
    SendMessageW(choice, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(itemState.adapterName));
    SendMessageW(choice, CB_SETCURSEL, 0, 0);
    for (int i = 0; i < count; ++i) {
        InsertRow(list, i, properties[i]);
    }
    return TRUE;
}

// What the two pages do alike.
INT_PTR OnPageMessage(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_PAINT:
            PaintHeaderLine(page);
            return TRUE;
        case WM_CTLCOLORSTATIC:
            return ColorHeader(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
        case WM_NOTIFY:
            if (reinterpret_cast<const NMHDR*>(lParam)->code == PSN_APPLY) {
                CloseOptions(page);
                return TRUE;
            }
            return FALSE;
        default:
            return FALSE;
    }
}

}  // namespace

INT_PTR CALLBACK AdapterPageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    constexpr int kListMargin = 3;
    switch (message) {
        case WM_INITDIALOG:
            return FillPage(page);
        case WM_SIZE:
            StretchToBottom(page, IDC_ADAPTER_PAGE_LIST, kListMargin);
            StretchToRight(page, IDC_ADAPTER_PAGE_LIST, 0);
            StretchToRight(page, IDC_ADAPTER_PAGE_ADAPTER, kListMargin);
            return TRUE;
        default:
            return OnPageMessage(page, message, wParam, lParam);
    }
}

INT_PTR CALLBACK AboutPageProc(HWND page, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_SIZE) {
        StretchToRight(page, IDC_ABOUT_PRODUCT, 0);
        return TRUE;
    }
    return OnPageMessage(page, message, wParam, lParam);
}
