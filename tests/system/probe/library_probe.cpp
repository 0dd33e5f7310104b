// library_probe.exe - loads and unloads the library as a Today screen does, in a program that is nothing else.
//
//   library_probe reload ROUNDS DLL
//       Each round loads the library, creates the item, refreshes it and paints it ten times, clears its cache and
//       unloads it. After round 10 and each hundredth a line tells what the process holds: round, handles, GDI objects,
//       USER objects, threads, KB.
//   library_probe unload DLL
//       Opens the detector by a tap, starts a scan, closes the dialog, unloads the library while the workers run, and
//       waits for them. Prints whether it is loaded right after unloading and at the end, and the threads then.

#include "platform/desktop/today_frame.h"
#include "platform/today.h"
#include "resources/resource_ids.h"
#include "tests/system/probe/process_usage.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

constexpr wchar_t kLibraryName[] = L"quorvane.dll";

struct LoadedItem {
    HMODULE library;
    TODAYLISTITEM record;
};

HWND CreateFrame() {
    WNDCLASSW frame = {};
    frame.lpfnWndProc = DefWindowProcW;
    frame.hInstance = GetModuleHandleW(nullptr);
    frame.lpszClassName = platform::kFrameClass;
    RegisterClassW(&frame);
    return CreateWindowExW(0, frame.lpszClassName, L"Today", WS_POPUP | WS_VISIBLE, 0, 0, 240, 320, nullptr, nullptr,
                           frame.hInstance, nullptr);
}

bool Load(const wchar_t* path, HWND frame, LoadedItem& item) {
    using Initialize = HWND (*)(TODAYLISTITEM*, HWND);
    item = {};
    item.library = LoadLibraryW(path);
    const auto initialize = reinterpret_cast<Initialize>(GetProcAddress(item.library, MAKEINTRESOURCEA(240)));
    if (initialize == nullptr) {
        return false;
    }
    item.record.fEnabled = TRUE;
    item.record.hinstDLL = item.library;
    item.record.hwndCustom = initialize(&item.record, frame);
    return item.record.hwndCustom != nullptr;
}

void Use(LoadedItem& item) {
    constexpr int kPaints = 10;
    const auto record = reinterpret_cast<LPARAM>(&item.record);
    HWND window = item.record.hwndCustom;
    // The first query only asks for a layout; the next one creates what the item draws with.
    while (SendMessageW(window, WM_TODAYCUSTOM_QUERYREFRESHCACHE, static_cast<WPARAM>(record), record) != FALSE) {
    }
    MoveWindow(window, 0, 50, 240, static_cast<int>(item.record.cyp), FALSE);
    for (int paint = 0; paint < kPaints; ++paint) {
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    }
    SendMessageW(window, WM_TODAYCUSTOM_CLEARCACHE, 0, record);
}

bool Unload(LoadedItem& item) {
    DestroyWindow(item.record.hwndCustom);
    FreeLibrary(item.library);
    return GetModuleHandleW(kLibraryName) == nullptr;
}

int Reload(int rounds, const wchar_t* path) {
    constexpr int kWarm = 10;  // what the system itself keeps after a first use is no leak
    constexpr int kBetween = 100;
    HWND frame = CreateFrame();
    for (int round = 1; round <= rounds; ++round) {
        LoadedItem item;
        if (!Load(path, frame, item)) {
            return 1;
        }
        Use(item);
        if (!Unload(item)) {
            return 1;
        }
        if (round == kWarm || round % kBetween == 0) {
            const ProcessUsage usage = ReadUsage(GetCurrentProcess());
            printf("%d %d %d %d %d %d\n", round, usage.handles, usage.gdiObjects, usage.userObjects, usage.threads,
                   usage.kilobytes);
            fflush(stdout);
        }
    }
    return 0;
}

void CALLBACK DriveDetector(HWND, UINT, UINT_PTR timer, DWORD) {
    static bool detecting = false;
    HWND dialog = FindWindowW(L"#32770", nullptr);
    if (dialog == nullptr) {
        return;
    }
    if (!detecting) {
        detecting = true;
        SendMessageW(dialog, WM_COMMAND, IDC_DETECTOR_DETECT, 0);
        return;
    }
    KillTimer(nullptr, timer);
    SendMessageW(dialog, WM_COMMAND, IDOK, 0);
}

int UnloadDuringScan(const wchar_t* path) {
    constexpr LPARAM kDetectorIcon = MAKELPARAM(190, 10);
    constexpr DWORD kBoundMs = 20000;
    LoadedItem item;
    if (!Load(path, CreateFrame(), item)) {
        return 1;
    }
    SetTimer(nullptr, 0, 300, DriveDetector);
    SendMessageW(item.record.hwndCustom, WM_LBUTTONUP, 0, kDetectorIcon);
    const int threads = ReadUsage(GetCurrentProcess()).threads;
    printf("loaded %d\n", !Unload(item));
    const DWORD start = GetTickCount();
    while (GetModuleHandleW(kLibraryName) != nullptr && GetTickCount() - start < kBoundMs) {
        Sleep(20);
    }
    printf("loaded %d\n", GetModuleHandleW(kLibraryName) != nullptr);
    printf("threads %d %d\n", threads, ReadUsage(GetCurrentProcess()).threads);
    return 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    const std::wstring command = count > 2 ? arguments[1] : L"";
    if (command == L"reload" && count > 3) {
        return Reload(_wtoi(arguments[2]), arguments[3]);
    }
    return command == L"unload" ? UnloadDuringScan(arguments[2]) : 2;
}
