// platform/property_sheet.h - property sheets that fill the screen below the taskbar, as a handheld shows them.
#pragma once

#include "platform/controls.h"

#include <span>

namespace platform {

struct SheetPage {
    int templateId;
    const wchar_t* title;
    DLGPROC procedure;
};

// PropertySheetW with PSH_PROPSHEETPAGE, PSH_USECALLBACK and PSH_MAXIMIZE over `owner`, first page first; returns when
// the sheet has been closed. At most kMostSheetPages pages. Every way of closing it leaves the page shown
// (PSN_KILLACTIVE) and applies (PSN_APPLY).
inline constexpr size_t kMostSheetPages = 4;
void RunPropertySheet(HINSTANCE instance, HWND owner, const wchar_t* caption, std::span<const SheetPage> pages);

// To be called on PSN_APPLY: ends the sheet that holds `page`.
void ClosePropertySheet(HWND page);

}  // namespace platform
