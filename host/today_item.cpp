// Plays the Today screen's side of the plug-in interface.

#include "host/today_item.h"

#include "platform/controls.h"

namespace {

constexpr WORD kInitializeOrdinal = 240;
constexpr WORD kOptionsOrdinal = 241;
constexpr WORD kOptionsTemplate = 500;

void FillRecord(TodayItem& item, const std::wstring& library) {
    item.record = {};
    wcsncpy(item.record.szName, L"Quorvane", kMaxItemName - 1);
    item.record.tlit = tlitCustom;
    item.record.fEnabled = TRUE;
    item.record.fOptions = TRUE;
    wcsncpy(item.record.szDLLPath, library.c_str(), MAX_PATH - 1);
    item.record.hinstDLL = item.library;
}

void ClearCache(TodayItem& item) {
    SendMessageW(item.record.hwndCustom, WM_TODAYCUSTOM_CLEARCACHE, 0, reinterpret_cast<LPARAM>(&item.record));
}

}  // namespace

bool LoadItem(TodayItem& item, const std::wstring& library, std::wstring& error) {
    item.library = LoadLibraryW(library.c_str());
    if (item.library == nullptr) {
        error = library + L" cannot be loaded (error " + std::to_wstring(GetLastError()) + L")";
        return false;
    }
    item.initialize =
        reinterpret_cast<decltype(item.initialize)>(GetProcAddress(item.library, MAKEINTRESOURCEA(kInitializeOrdinal)));
    item.optionsProcedure = reinterpret_cast<DLGPROC>(GetProcAddress(item.library, MAKEINTRESOURCEA(kOptionsOrdinal)));
    if (item.initialize == nullptr || item.optionsProcedure == nullptr) {
        error = library + L" is no Today item: it lacks export 240 or 241";
        FreeLibrary(item.library);
        item = {};
        return false;
    }
    FillRecord(item, library);
    return true;
}

bool CreateItemWindow(TodayItem& item, HWND parent) {
    item.record.hwndCustom = item.initialize(&item.record, parent);
    return item.record.hwndCustom != nullptr;
}

bool QueryRefresh(TodayItem& item) {
    // Some items expect the record in wParam, as the first Today screens passed it.
    const auto record = reinterpret_cast<LPARAM>(&item.record);
    return SendMessageW(item.record.hwndCustom, WM_TODAYCUSTOM_QUERYREFRESHCACHE, static_cast<WPARAM>(record),
                        record) != FALSE;
}

void EnableItem(TodayItem& item, bool enabled) {
    item.record.fEnabled = enabled;
    if (!enabled) {
        ClearCache(item);
    }
    ShowWindow(item.record.hwndCustom, enabled ? SW_SHOWNA : SW_HIDE);
}

void RunItemOptions(const TodayItem& item, HWND owner) {
    DialogBoxParamW(item.library, MAKEINTRESOURCEW(kOptionsTemplate), owner, item.optionsProcedure, 0);
}

bool UnloadItem(TodayItem& item) {
    if (item.record.hwndCustom != nullptr) {
        ClearCache(item);
        DestroyWindow(item.record.hwndCustom);
    }
    const std::wstring library = item.record.szDLLPath;
    if (item.library != nullptr) {
        FreeLibrary(item.library);
    }
    item = {};
    return GetModuleHandleW(library.c_str()) == nullptr;
}
