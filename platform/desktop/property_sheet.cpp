// A desktop's property sheet, made to behave like a handheld's: it fills the Today host's screen below the taskbar,
// with tabs of the screen's scale and one button, the done button at the end of their row. Closing a desktop's sheet
// any other way than by OK would drop what was changed, so every way is turned into OK.

#include "platform/property_sheet.h"

#include "platform/desktop/template_scale.h"
#include "platform/screen.h"
#include "platform/shell.h"

#include <initializer_list>

namespace platform {
namespace {

// Numbers that the system gives the controls of its own sheet.
constexpr int kTabControl = 0x3020;
constexpr int kApplyButton = 0x3021;
constexpr int kHelpButton = 9;

// One sheet is open at a time.
WNDPROC sheetProcedure = nullptr;
HFONT sheetFont = nullptr;  // on a high-resolution screen

void StripSheet(HWND sheet) {
    SetWindowLongPtrW(sheet, GWL_STYLE, GetWindowLongPtrW(sheet, GWL_STYLE) & ~LONG_PTR{WS_CAPTION | WS_SYSMENU});
    SetWindowLongPtrW(sheet, GWL_EXSTYLE, GetWindowLongPtrW(sheet, GWL_EXSTYLE) & ~LONG_PTR{WS_EX_DLGMODALFRAME});
    SetWindowPos(sheet, nullptr, 0, 0, 0, 0, SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER);
    for (const int id : {IDCANCEL, kApplyButton, kHelpButton}) {
        if (HWND button = GetDlgItem(sheet, id)) {
            ShowWindow(button, SW_HIDE);
        }
    }
}

// The system's own template has one font size only.
void ScaleFont(HWND sheet) {
    LOGFONTW description = {};
    if (!IsHighResolution(ScreenSize()) || GetObjectW(reinterpret_cast<HFONT>(SendMessageW(sheet, WM_GETFONT, 0, 0)),
                                                      sizeof(description), &description) == 0) {
        return;
    }
    description.lfHeight *= 2;
    sheetFont = CreateFontIndirectW(&description);
    for (const int id : {kTabControl, IDOK}) {
        SendDlgItemMessageW(sheet, id, WM_SETFONT, reinterpret_cast<WPARAM>(sheetFont), FALSE);
    }
}

// Pages take the place that the tab control leaves them when they are shown.
void FillScreen(HWND sheet) {
    InitFullScreenDialog(sheet);
    RECT area = {};
    GetClientRect(sheet, &area);
    HWND tabs = GetDlgItem(sheet, kTabControl);
    SetWindowLongPtrW(tabs, GWL_STYLE, GetWindowLongPtrW(tabs, GWL_STYLE) | WS_CLIPSIBLINGS);
    MoveWindow(tabs, 0, 0, area.right, area.bottom, TRUE);
    RECT tab = {};
    SendMessageW(tabs, TCM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&tab));
    const int width = 2 * tab.bottom;
    SetWindowPos(GetDlgItem(sheet, IDOK), HWND_TOP, area.right - width, 0, width, tab.bottom, 0);
}

LRESULT CALLBACK SheetProc(HWND sheet, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CLOSE || (message == WM_COMMAND && LOWORD(wParam) == IDCANCEL)) {
        return SendMessageW(sheet, PSM_PRESSBUTTON, PSBTN_OK, 0);
    }
    return CallWindowProcW(sheetProcedure, sheet, message, wParam, lParam);
}

int CALLBACK OnSheetEvent(HWND sheet, UINT event, LPARAM) {
    if (event == PSCB_INITIALIZED) {
        sheetProcedure =
            reinterpret_cast<WNDPROC>(SetWindowLongPtrW(sheet, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(SheetProc)));
        StripSheet(sheet);
        ScaleFont(sheet);
        FillScreen(sheet);
    }
    return 0;
}

// A copy of the page's template at the screen's scale; null when there is none. The caller frees it.
void* CopyTemplate(HINSTANCE instance, int templateId) {
    HRSRC resource = FindResourceW(instance, MAKEINTRESOURCEW(templateId), RT_DIALOG);
    HGLOBAL loaded = resource != nullptr ? LoadResource(instance, resource) : nullptr;
    if (loaded == nullptr) {
        return nullptr;
    }
    const DWORD bytes = SizeofResource(instance, resource);
    void* copy = LocalAlloc(LPTR, bytes);
    if (copy != nullptr) {
        memcpy(copy, loaded, bytes);
        ScaleTemplateToScreen(copy);
    }
    return copy;
}

bool FillPage(HINSTANCE instance, const SheetPage& page, PROPSHEETPAGEW& record) {
    record = {};
    record.dwSize = sizeof(record);
    record.dwFlags = PSP_USETITLE | PSP_DLGINDIRECT;
    record.hInstance = instance;
    record.pResource = static_cast<DLGTEMPLATE*>(CopyTemplate(instance, page.templateId));
    record.pszTitle = page.title;
    record.pfnDlgProc = page.procedure;
    return record.pResource != nullptr;
}

}  // namespace

void RunPropertySheet(HINSTANCE instance, HWND owner, const wchar_t* caption, std::span<const SheetPage> pages) {
    PROPSHEETPAGEW records[kMostSheetPages] = {};
    UINT count = 0;
    for (const SheetPage& page : pages) {
        if (count < kMostSheetPages && FillPage(instance, page, records[count])) {
            ++count;
        }
    }
    PROPSHEETHEADERW header = {};
    header.dwSize = sizeof(header);
    header.dwFlags = PSH_PROPSHEETPAGE | PSH_USECALLBACK | PSH_NOAPPLYNOW | PSH_NOCONTEXTHELP;
    header.hwndParent = owner;
    header.hInstance = instance;
    header.pszCaption = caption;
    header.nPages = count;
    header.ppsp = records;
    header.pfnCallback = OnSheetEvent;
    if (count != 0) {
        PropertySheetW(&header);
    }
    if (sheetFont != nullptr) {
        DeleteObject(sheetFont);
        sheetFont = nullptr;
    }
    for (const PROPSHEETPAGEW& record : records) {
        LocalFree(const_cast<DLGTEMPLATE*>(record.pResource));
    }
}

// OK ends a desktop's sheet by itself once every page has applied; destroying it here would pull it from under that.
void ClosePropertySheet(HWND) {}

}  // namespace platform
