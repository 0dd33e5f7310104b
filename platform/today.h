// platform/today.h - the Today screen's plug-in interface: the record it hands to an item and the messages they
// exchange.
#pragma once

#include "platform/system.h"

inline constexpr int kMaxItemName = 32;

enum TodayListItemType : int32_t {
    tlitOwner = 0,
    tlitAppointments,
    tlitMail,
    tlitTasks,
    tlitCustom,
};

// One row of the Today screen. The host owns it and rereads `cyp` (pixels) after every answer to the refresh query.
struct TODAYLISTITEM {
    wchar_t szName[kMaxItemName];
    TodayListItemType tlit;
    DWORD dwOrder;
    DWORD cyp;
    BOOL fEnabled;
    BOOL fOptions;
    DWORD grfFlags;
    wchar_t szDLLPath[MAX_PATH];
    HINSTANCE hinstDLL;
    HWND hwndCustom;
    BOOL fSizeOnDraw;
    BYTE* prgbCachedData;
    DWORD cbCachedData;
};

// Asks the host to draw the Today background of rectangle `rc` (of window `hwnd`) into `hdc`.
struct TODAYDRAWWATERMARKINFO {
    HDC hdc;
    RECT rc;
    HWND hwnd;
};

inline constexpr UINT TODAYM_DRAWWATERMARK = WM_USER + 101;              // lParam: TODAYDRAWWATERMARKINFO*
inline constexpr UINT WM_TODAYCUSTOM_CLEARCACHE = WM_USER + 242;         // lParam: TODAYLISTITEM*
inline constexpr UINT WM_TODAYCUSTOM_QUERYREFRESHCACHE = WM_USER + 243;  // lParam: TODAYLISTITEM*
