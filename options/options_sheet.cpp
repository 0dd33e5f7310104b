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

struct Stretch {
    RECT page;
    RECT area;  // of the control, on the page
    SIZE margin;
};

Stretch MeasureStretch(HWND page, int controlId, int margin) {
    Stretch stretch = {};
    RECT units = {0, 0, margin, margin};
    GetClientRect(page, &stretch.page);
    GetWindowRect(GetDlgItem(page, controlId), &stretch.area);
    MapWindowPoints(nullptr, page, reinterpret_cast<POINT*>(&stretch.area), 2);
    MapDialogRect(page, &units);
    stretch.margin = {units.right, units.bottom};
    return stretch;
}

void ResizeControl(HWND page, int controlId, int width, int height) {
    SetWindowPos(GetDlgItem(page, controlId), nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
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
            // Not DefWindowProcW, as a window would: the dialog manager does what is left over.
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
    const Stretch stretch = MeasureStretch(page, controlId, margin);
    ResizeControl(page, controlId, stretch.area.right - stretch.area.left,
                  stretch.page.bottom - stretch.margin.cy - stretch.area.top);
}

void StretchToRight(HWND page, int controlId, int margin) {
    const Stretch stretch = MeasureStretch(page, controlId, margin);
    ResizeControl(page, controlId, stretch.page.right - stretch.margin.cx - stretch.area.left,
                  stretch.area.bottom - stretch.area.top);
}
