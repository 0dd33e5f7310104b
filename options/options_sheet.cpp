// Turns the host's dialog into a full-screen page.

#include "options/options_sheet.h"

#include "platform/shell.h"

extern "C" INT_PTR CALLBACK CustomItemOptionsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            platform::InitFullScreenDialog(dialog);
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wParam) == IDOK) {
                EndDialog(dialog, 1);
            }
            return TRUE;
        default:
            return FALSE;
    }
}
