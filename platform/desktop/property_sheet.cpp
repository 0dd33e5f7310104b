// A desktop's property sheet, made to behave like a handheld's: it fills the Today host's screen, has no row of
// buttons, and its close box is the done button. Closing a desktop's sheet any other way than by OK would drop what was
// changed, so every way is turned into OK.

#include "platform/property_sheet.h"

#include "platform/desktop/template_scale.h"
#include "platform/screen.h"

namespace platform {
namespace {

// Numbers that the system gives the controls of its own sheet.
constexpr int kTabControl = 0x3020;
constexpr int kApplyButton = 0x3021;
constexpr int kHelpButton = 9;

// One sheet is open at a time.
WNDPROC sheetProcedure = nullptr;

void HideButtons(HWND sheet) {
    for (const int id : {IDOK, IDCANCEL, kApplyButton, kHelpButton}) {
        if (HWND button = GetDlgItem(sheet, id)) {
            ShowWindow(button, SW_HIDE);
        }
    }
}

// Pages take the place that the tab control leaves them when they are shown.
void FillScreen(HWND sheet) {
    const SIZE screen = ScreenSize();
    MoveDialog(sheet, 0, 0, screen.cx, screen.cy);
    RECT area = {};
    GetClientRect(sheet, &area);
    MoveWindow(GetDlgItem(sheet, kTabControl), 0, 0, area.right, area.bottom, TRUE);
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
        HideButtons(sheet);
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
    for (const PROPSHEETPAGEW& record : records) {
        LocalFree(const_cast<DLGTEMPLATE*>(record.pResource));
    }
}

// OK ends a desktop's sheet by itself once every page has applied; destroying it here would pull it from under that.
void ClosePropertySheet(HWND) {}

}  // namespace platform
