// scan_probe.exe - runs the detector's scan in a program of its own, for the system tests and the benchmarks.
//
//   scan_probe scan ROUNDS     a scan after the other; for each, a line a host that answered: "host", the ms after
//   which
//                              it was complete, address, hardware address or "-", name in hexadecimal digits or "-";
//                              then "round" with the ms of the whole scan and how many hosts stayed pending. At the
//                              end "left" with the threads and handles more than before, ms of processor time, and KB
//                              of the largest working set.
//   scan_probe unload DLL      opens the detector of that library by a tap, starts a scan, closes the dialog, unloads
//   the
//                              library while the workers run, and waits for them. Prints "loaded" 1 or 0 right
//                              after unloading and at the end.

#include "diagnostics/scan.h"
#include "platform/desktop/today_frame.h"
#include "platform/today.h"
#include "resources/resource_ids.h"

#include <psapi.h>
#include <tlhelp32.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

int CountThreads() {
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof(entry);
    int count = 0;
    for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry)) {
        count += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
    }
    CloseHandle(snapshot);
    return count;
}

// About: a new handle takes the lowest free number. (Wine does not count them.)
int CountHandles() {
    HANDLE probe = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    CloseHandle(probe);
    return static_cast<int>(reinterpret_cast<intptr_t>(probe) / 4);
}

bool WaitForThreads(int expected, DWORD timeoutMs) {
    const DWORD start = GetTickCount();
    while (CountThreads() > expected) {
        if (GetTickCount() - start > timeoutMs) {
            return false;
        }
        Sleep(20);
    }
    return true;
}

std::string AddressText(uint32_t address) {
    in_addr number;
    number.s_addr = address;
    return inet_ntoa(number);
}

std::string NameText(const char* name) {
    std::string text;
    for (; *name != 0; ++name) {
        char digits[4];
        snprintf(digits, sizeof(digits), "%02x", static_cast<uint8_t>(*name));
        text += digits;
    }
    return text.empty() ? "-" : text;
}

std::string HardwareText(const HostRecord& host) {
    const uint8_t* b = host.mac.bytes;
    char text[18] = "-";
    if (host.macKnown != 0) {
        snprintf(text, sizeof(text), "%02x:%02x:%02x:%02x:%02x:%02x", b[0], b[1], b[2], b[3], b[4], b[5]);
    }
    return text;
}

// Prints the hosts that have answered since; how many are still pending.
int ShowNewHosts(DWORD elapsed) {
    int pending = 0;
    for (HostRecord& host : scanState.table->hosts) {
        const int32_t status = StatusOf(host);
        pending += status == kHostPending ? 1 : 0;
        if (status == kHostAnswered && host.listed == 0) {
            host.listed = 1;
            printf("host %lu %s %s %s\n", elapsed, AddressText(host.address).c_str(), HardwareText(host).c_str(),
                   NameText(host.name).c_str());
        }
    }
    return pending;
}

void ShowUsage(int threads, int handles) {
    FILETIME created, ended, kernel, user;
    GetProcessTimes(GetCurrentProcess(), &created, &ended, &kernel, &user);
    const auto ms = [](const FILETIME& time) {
        return ((static_cast<uint64_t>(time.dwHighDateTime) << 32) + time.dwLowDateTime) / 10000;
    };
    PROCESS_MEMORY_COUNTERS memory = {};
    GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof(memory));
    printf("left %d %d %llu %llu\n", CountThreads() - threads, CountHandles() - handles, ms(kernel) + ms(user),
           static_cast<unsigned long long>(memory.PeakWorkingSetSize / 1024));
}

int Scan(int rounds) {
    constexpr DWORD kBoundMs = 30000;
    WSADATA winsock;
    WSAStartup(0x0102, &winsock);
    int threads = 0;
    int handles = 0;
    for (int round = 0; round < rounds; ++round) {
        const DWORD start = GetTickCount();
        if (!StartScan(nullptr)) {
            return 1;
        }
        int pending = kScanHosts;
        while (pending > 0 && GetTickCount() - start < kBoundMs) {
            Sleep(20);
            pending = ShowNewHosts(GetTickCount() - start);
        }
        printf("round %lu %d\n", GetTickCount() - start, pending);
        fflush(stdout);
        ReleaseScanTable();
        WaitForThreads(round == 0 ? 1 : threads, 3000);
        if (round == 0) {  // what the system itself keeps after a first use is no leak
            threads = CountThreads();
            handles = CountHandles();
        }
    }
    ShowUsage(threads, handles);
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

HWND CreateFrame() {
    WNDCLASSW frame = {};
    frame.lpfnWndProc = DefWindowProcW;
    frame.hInstance = GetModuleHandleW(nullptr);
    frame.lpszClassName = platform::kFrameClass;
    RegisterClassW(&frame);
    return CreateWindowExW(0, frame.lpszClassName, L"Today", WS_POPUP | WS_VISIBLE, 0, 0, 240, 320, nullptr, nullptr,
                           frame.hInstance, nullptr);
}

int Unload(const wchar_t* path) {
    constexpr LPARAM kDetectorIcon = MAKELPARAM(190, 10);
    constexpr DWORD kBoundMs = 20000;
    using Initialize = HWND (*)(TODAYLISTITEM*, HWND);
    HWND frame = CreateFrame();  // first: the library measures the screen when it is loaded
    HMODULE library = LoadLibraryW(path);
    const auto initialize = reinterpret_cast<Initialize>(GetProcAddress(library, MAKEINTRESOURCEA(240)));
    TODAYLISTITEM record = {};
    record.fEnabled = TRUE;
    record.hinstDLL = library;
    HWND item = initialize(&record, frame);
    SetTimer(nullptr, 0, 300, DriveDetector);
    SendMessageW(item, WM_LBUTTONUP, 0, kDetectorIcon);
    const int threads = CountThreads();
    DestroyWindow(item);
    FreeLibrary(library);
    printf("loaded %d\n", GetModuleHandleW(L"quorvane.dll") != nullptr);
    fflush(stdout);
    const DWORD start = GetTickCount();
    while (GetModuleHandleW(L"quorvane.dll") != nullptr && GetTickCount() - start < kBoundMs) {
        Sleep(20);
    }
    printf("loaded %d\n", GetModuleHandleW(L"quorvane.dll") != nullptr);
    printf("threads %d %d\n", threads, CountThreads());
    return 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    const std::wstring command = count > 2 ? arguments[1] : L"";
    if (command == L"scan") {
        return Scan(_wtoi(arguments[2]));
    }
    return command == L"unload" ? Unload(arguments[2]) : 2;
}
