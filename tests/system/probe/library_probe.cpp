// library_probe.exe - loads and unloads the library as the Today host does, in a program that is nothing else.
//
//   library_probe reload ROUNDS DLL
//       Each round loads the library, creates the item, refreshes it and paints it ten times, clears its cache and
//       unloads it. After round 10 and each hundredth a line tells what the process holds: round, handles, GDI objects,
//       USER objects, threads, KB.
//   library_probe unload DLL
//       Opens the detector by a tap, starts a scan, closes the dialog, unloads the library while the workers run, and
//       waits for them. A line tells whether it is loaded right after unloading and at the end, another the threads
//       then.

#include "host/today_item.h"
#include "platform/desktop/today_frame.h"
#include "resources/resource_ids.h"
#include "tests/system/probe/process_usage.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

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

void Use(TodayItem& item) {
    // The first query only asks for a layout; the next one creates what the item draws with.
    while (QueryRefresh(item)) {
    }
    MoveWindow(item.record.hwndCustom, 0, 50, 240, static_cast<int>(item.record.cyp), FALSE);
    for (int paint = 0; paint < 10; ++paint) {
        RedrawWindow(item.record.hwndCustom, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    }
}

int Reload(int rounds, const wchar_t* path) {
    HWND frame = CreateFrame();
    for (int round = 1; round <= rounds; ++round) {
        TodayItem item;
        if (!Load(item, path, frame)) {
            return 1;
        }
        Use(item);
        if (!UnloadItem(item)) {
            return 1;
        }
        if (round == 10 || round % 100 == 0) {
            const ProcessUsage usage = ReadUsage(GetCurrentProcess());
            printf("%d %d %d %d %d %d\n", round, usage.handles, usage.gdiObjects, usage.userObjects, usage.threads,
                   usage.kilobytes);
        }
    }
    return 0;
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

int UnloadDuringScan(const wchar_t* path) {
    constexpr LPARAM kDetectorIcon = MAKELPARAM(190, 10);
    TodayItem item;
    if (!Load(item, path, CreateFrame())) {
        return 1;
    }
    SetTimer(nullptr, 0, 300, DriveDetector);
    SendMessageW(item.record.hwndCustom, WM_LBUTTONUP, 0, kDetectorIcon);
    const int threads = ReadUsage(GetCurrentProcess()).threads;
    printf("%d ", !UnloadItem(item));
    for (int waits = 0; waits < 1000 && GetModuleHandleW(path) != nullptr; ++waits) {
        Sleep(20);
    }
    printf("%d\n%d %d\n", GetModuleHandleW(path) != nullptr, threads, ReadUsage(GetCurrentProcess()).threads);
    return 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count == 4) {
        return Reload(_wtoi(arguments[2]), arguments[3]);
    }
    return count == 3 ? UnloadDuringScan(arguments[2]) : 2;
}
