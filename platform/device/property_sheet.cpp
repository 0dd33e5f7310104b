// The handheld's property sheet, maximised. Its records end where those of the first common controls did.

#include "platform/property_sheet.h"

#include "platform/device/ce_api.h"

namespace platform {
namespace {

constexpr DWORD kHeaderBytes = offsetof(PROPSHEETHEADERW, hbmWatermark);
static_assert(sizeof(PROPSHEETPAGEW_V1) == 40 && kHeaderBytes == 40);

// Without the version the sheet would be drawn in the style of the controls before it: tabs at the top.
int CALLBACK OnSheetEvent(HWND, UINT event, LPARAM) {
    return event == PSCB_GETVERSION ? kCommonControlsVersion : 0;
}

}  // namespace

void RunPropertySheet(HINSTANCE instance, HWND owner, const wchar_t* caption, std::span<const SheetPage> pages) {
    PROPSHEETPAGEW_V1 records[kMostSheetPages] = {};
    UINT count = 0;
    for (const SheetPage& page : pages.first(pages.size() < kMostSheetPages ? pages.size() : kMostSheetPages)) {
        PROPSHEETPAGEW_V1& record = records[count++];
        record.dwSize = sizeof(record);
        record.dwFlags = PSP_USETITLE;
        record.hInstance = instance;
        record.pszTemplate = MAKEINTRESOURCEW(page.templateId);
        record.pszTitle = page.title;
        record.pfnDlgProc = page.procedure;
    }
    PROPSHEETHEADERW header = {};
    header.dwSize = kHeaderBytes;
    header.dwFlags = PSH_PROPSHEETPAGE | PSH_USECALLBACK | PSH_MAXIMIZE;
    header.hwndParent = owner;
    header.hInstance = instance;
    header.pszCaption = caption;
    header.nPages = count;
    header.ppsp = reinterpret_cast<const PROPSHEETPAGEW*>(records);
    header.pfnCallback = OnSheetEvent;
    PropertySheetW(&header);
}

void ClosePropertySheet(HWND page) {
    DestroyWindow(GetParent(page));
}

}  // namespace platform
