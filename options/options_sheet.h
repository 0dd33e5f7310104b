// options/options_sheet.h - the item's options, which the Today settings open.
#pragma once

#include "platform/system.h"

// Export 241: the dialog procedure that the host runs over template 500. It turns that dialog into a full-screen page
// with a property sheet over it.
extern "C" INT_PTR CALLBACK CustomItemOptionsDlgProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

// What the sheet's pages share.

// On PSN_APPLY: closes the sheet and the options dialog behind it.
void CloseOptions(HWND page);

// Answers WM_PAINT: a line under the page's header on a portrait screen, nothing on a landscape one.
void PaintHeaderLine(HWND page);

// Answers WM_CTLCOLORSTATIC: blue on white for the page header, 0 for every other control.
INT_PTR ColorHeader(HDC context, HWND control);

// Make a control reach down to the page's bottom or across to its right edge, `margin` dialog units before it.
void StretchToBottom(HWND page, int controlId, int margin);
void StretchToRight(HWND page, int controlId, int margin);
