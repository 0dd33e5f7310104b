// usage_probe.exe - what the Today host of the same session holds, for bench/soak: prints its handles, its GDI objects
// and the session's USER objects. Ends with 3 when there is no host.
//
// Wine 8 answers GetGuiResources with 0 and GetProcessHandleCount with nothing, so all is counted by hand.

#include "platform/desktop/today_frame.h"

#include <winternl.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

// Duplicating is the one question that every handle of another process answers.
int CountHandles(HANDLE process) {
    constexpr uintptr_t kStep = 4;
    constexpr uintptr_t kHighest = 4096 * kStep;
    int count = 0;
    for (uintptr_t value = kStep; value <= kHighest; value += kStep) {
        HANDLE copy = nullptr;
        if (DuplicateHandle(process, reinterpret_cast<HANDLE>(value), GetCurrentProcess(), &copy, 0, FALSE,
                            DUPLICATE_SAME_ACCESS)) {
            CloseHandle(copy);
            ++count;
        }
    }
    return count;
}

// The table to which the process's environment block points, as every 64-bit Windows has laid it out.
int CountGdiObjects(HANDLE process) {
    struct Entry {
        uint64_t object;
        uint32_t owner;
        uint16_t generation;
        uint8_t type;  // 0 is free
        uint8_t flags;
        uint64_t user;
    };
    constexpr uintptr_t kTableInBlock = 0xf8;
    constexpr size_t kEntries = 0x4000;
    PROCESS_BASIC_INFORMATION basic = {};
    uint64_t table = 0;
    std::vector<Entry> entries(kEntries);
    if (NtQueryInformationProcess(process, ProcessBasicInformation, &basic, sizeof(basic), nullptr) != 0 ||
        !ReadProcessMemory(process, reinterpret_cast<char*>(basic.PebBaseAddress) + kTableInBlock, &table,
                           sizeof(table), nullptr) ||
        !ReadProcessMemory(process, reinterpret_cast<void*>(table), entries.data(), kEntries * sizeof(Entry),
                           nullptr)) {
        return -1;
    }
    return static_cast<int>(std::ranges::count_if(entries, [](const Entry& entry) { return entry.type != 0; }));
}

// New objects first fill the gaps of the session's one table: behind so many there is none left, and the last one's
// place tells how many there are.
int CountUserObjects() {
    constexpr int kFirst = 0x20;
    constexpr int kStep = 2;
    constexpr int kMenus = 2000;
    std::vector<HMENU> menus(kMenus);
    int last = 0;
    for (HMENU& menu : menus) {
        menu = CreateMenu();
        last = std::max<int>(last, LOWORD(reinterpret_cast<uintptr_t>(menu)));
    }
    for (HMENU menu : menus) {
        DestroyMenu(menu);
    }
    return (last - kFirst) / kStep + 1 - kMenus;
}

}  // namespace

int main() {
    HWND frame = FindWindowW(platform::kFrameClass, nullptr);
    if (frame == nullptr) {
        return 3;
    }
    DWORD process = 0;
    GetWindowThreadProcessId(frame, &process);
    HANDLE access = OpenProcess(PROCESS_ALL_ACCESS, FALSE, process);
    printf("%d %d %d\n", CountHandles(access), CountGdiObjects(access), CountUserObjects());
    return 0;
}
