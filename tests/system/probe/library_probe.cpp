// library_probe.exe - loads and unloads the library as the Today host does, in a program that is nothing else.
//
//   library_probe DLL ROUNDS   loads it, creates the item, refreshes and paints it, and unloads it, so many times
//   library_probe DLL          opens the detector by a tap, starts a scan, closes the dialog and unloads the library
//                              while the workers run; prints whether it is loaded then, and after at most 20 s more

#include "host/today_item.h"
#include "platform/desktop/today_frame.h"
#include "resources/resource_ids.h"

#include <cstdio>
#include <utility>

namespace {

// The library measures the screen when it is loaded.
HWND CreateFrame() {
    WNDCLASSW frame = {};
    frame.lpfnWndProc = DefWindowProcW;
    frame.lpszClassName = platform::kFrameClass;
    RegisterClassW(&frame);
    return CreateWindowExW(0, frame.lpszClassName, L"Today", WS_POPUP | WS_VISIBLE, 0, 0, 240, 320, nullptr, nullptr,
                           nullptr, nullptr);
}

bool Load(TodayItem& item, const wchar_t* path, HWND frame) {
    std::wstring error;
    return LoadItem(item, path, error) && CreateItemWindow(item, frame);
}

bool UseOnce(const wchar_t* path, HWND frame) {
    TodayItem item;
    if (!Load(item, path, frame)) {
        return false;
    }
    // The first query only asks for a layout; the next one creates what the item draws with.
    while (QueryRefresh(item)) {
    }
    MoveWindow(item.record.hwndCustom, 0, 50, 240, static_cast<int>(item.record.cyp), FALSE);
    for (int paint = 0; paint < 10; ++paint) {
        RedrawWindow(item.record.hwndCustom, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    }
    return UnloadItem(item);
}

// Begins a scan at the first tick that sees the dialog, and closes the dialog at the next.
void CALLBACK DriveDetector(HWND, UINT, UINT_PTR timer, DWORD) {
    static WPARAM command = IDC_DETECTOR_DETECT;
    if (HWND dialog = FindWindowW(L"#32770", nullptr)) {
        if (command == IDOK) {
            KillTimer(nullptr, timer);
        }
        SendMessageW(dialog, WM_COMMAND, std::exchange(command, IDOK), 0);
    }
}

bool UnloadDuringScan(const wchar_t* path, HWND frame) {
    constexpr LPARAM kDetectorIcon = MAKELPARAM(190, 10);
    TodayItem item;
    if (!Load(item, path, frame)) {
        return false;
    }
    SetTimer(nullptr, 0, 300, DriveDetector);
    SendMessageW(item.record.hwndCustom, WM_LBUTTONUP, 0, kDetectorIcon);
    printf("%d ", !UnloadItem(item));
    for (int waits = 0; waits < 1000 && GetModuleHandleW(path) != nullptr; ++waits) {
        Sleep(20);
    }
    printf("%d\n", GetModuleHandleW(path) != nullptr);
    return true;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    HWND frame = CreateFrame();
    if (count == 2) {
        return UnloadDuringScan(arguments[1], frame) ? 0 : 1;
    }
    for (int rounds = _wtoi(arguments[2]); rounds > 0; --rounds) {
        if (!UseOnce(arguments[1], frame)) {
            return 1;
        }
    }
    return 0;
}
