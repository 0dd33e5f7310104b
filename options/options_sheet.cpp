// The options dialog stays empty behind the sheet; it only remembers to close with it.

#include "options/options_sheet.h"

#include "item/item_state.h"
#include "options/adapter_page.h"
#include "options/options_page.h"
#include "platform/property_sheet.h"
#include "platform/scoped_gdi.h"
#include "platform/shell.h"
#include "resources/resource_ids.h"

namespace {

HWND optionsDialog = nullptr;

void OpenSheet() {
    constexpr platform::SheetPage kPages[] = {
        {IDD_ADAPTER_PAGE, L"Adapter", AdapterPageProc},
        {IDD_OPTIONS_PAGE, L"Options", OptionsPageProc},
        {IDD_ABOUT_PAGE, L"About", AboutPageProc},
    };
    platform::RunPropertySheet(itemState.instance, optionsDialog, L"Quorvane", kPages);
}

}  // namespace

extern "C" INT_PTR CALLBACK CustomItemOptionsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_INITDIALOG:
            platform::InitFullScreenDialog(dialog);
            optionsDialog = dialog;
            OpenSheet();
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) == IDOK) {
                EndDialog(dialog, 1);
                return TRUE;
            }
            return FALSE;
        case WM_CTLCOLORSTATIC:
            return ColorHeader(reinterpret_cast<HDC>(wParam), reinterpret_cast<HWND>(lParam));
        default:
            return FALSE;
    }
}

void CloseOptions(HWND page) {
    platform::ClosePropertySheet(page);
    PostMessageW(optionsDialog, WM_COMMAND, IDOK, 0);
}

void PaintHeaderLine(HWND page) {
    constexpr int kLineTop = 24;
    constexpr int kLineEnd = 319;
    PAINTSTRUCT paint;
    HDC context = BeginPaint(page, &paint);
    if (!IsLandscape()) {
        const bool hiRes = IsHiResScreen();
        const int top = kLineTop * ScreenScale();
        const POINT points[] = {{0, top}, {hiRes ? 2 * kLineEnd + 1 : kLineEnd, top}};
        Polyline(context, points, 2);
    }
    EndPaint(page, &paint);
}

INT_PTR ColorHeader(HDC context, HWND control) {
    if (GetDlgCtrlID(control) != IDC_PAGE_HEADER) {
        return 0;
    }
    SetBkMode(context, TRANSPARENT);
    SetTextColor(context, RGB(0, 0, 255));
    SetBkColor(context, RGB(255, 255, 255));
    return reinterpret_cast<INT_PTR>(GetStockObject(WHITE_BRUSH));
}

void StretchToBottom(HWND page, int controlId, int margin) {
    HWND control = GetDlgItem(page, controlId);
    RECT pageArea = {};
    RECT area = {};
    RECT units = {0, 0, 0, margin};
    GetClientRect(page, &pageArea);
    GetWindowRect(control, &area);
    MapWindowPoints(nullptr, page, reinterpret_cast<POINT*>(&area), 2);
    MapDialogRect(page, &units);
    SetWindowPos(control, nullptr, 0, 0, area.right - area.left, pageArea.bottom - units.bottom - area.top,
                 SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}
