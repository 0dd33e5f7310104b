// probe.exe - reads and drives the dialogs of the Today host in the same session, for the system tests.
//
//   probe dump           the dialog that takes input now (the topmost one; a message box is one, too), or else the
//                        host's screen: its number (0 for the screen), the x and y of its beginning on the monitor and
//                        its title, by tabs. Then each control of a dialog: id, class, 1 if it is enabled, the x and y
//                        of its middle on the monitor, text; behind a list view its rows, each column behind a tab
//   probe press ID       presses a button of a dialog, for which it waits up to 10 s; returns at once
//   probe set ID TEXT    puts a text into a control, for which it waits as long
//   probe usage          what the host holds: handles, GDI objects; and the session's USER objects
//
// Ends with 3 when what it asks for is not there, and never with 1, with which Wine ends programs that it failed to
// start. Line ends and tabs inside a text come out as blanks.

#include "platform/desktop/today_frame.h"

#include <commctrl.h>
#include <winternl.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace {

constexpr int kNotThere = 3;

std::string Utf8(std::wstring text) {
    std::ranges::replace_if(
        text, [](wchar_t c) { return c < L' '; }, L' ');
    const int length = static_cast<int>(text.size());
    std::string out(text.size() * 3, '\0');
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), length, out.data(), static_cast<int>(out.size()),
                                          nullptr, nullptr);
    return out.substr(0, static_cast<size_t>(bytes));
}

std::string TextOf(HWND window) {
    std::wstring text(4096, L'\0');
    const LRESULT length = SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    return Utf8(text.substr(0, static_cast<size_t>(length)));
}

std::wstring ClassOf(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return name;
}

BOOL CALLBACK KeepActiveDialog(HWND window, LPARAM found) {
    if (ClassOf(window) != L"#32770" || !IsWindowVisible(window) || !IsWindowEnabled(window)) {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

HWND ActiveDialog() {
    HWND found = nullptr;
    EnumWindows(KeepActiveDialog, reinterpret_cast<LPARAM>(&found));
    return found;
}

// Also on the page of a property sheet. Null if it does not come.
HWND WaitForControl(int id) {
    HWND found = nullptr;
    for (int looks = 0; found == nullptr && looks < 500; ++looks) {
        Sleep(looks > 0 ? 20 : 0);
        HWND dialog = ActiveDialog();
        found = GetDlgItem(dialog, id);
        HWND page = nullptr;
        while (found == nullptr && (page = FindWindowExW(dialog, page, L"#32770", nullptr)) != nullptr) {
            found = IsWindowVisible(page) ? GetDlgItem(page, id) : nullptr;
        }
    }
    return found;
}

// Cells are read through memory of the other process: list-view messages carry pointers as they are.
void PrintRows(HWND list) {
    struct Cell {
        LVITEMW item;
        wchar_t text[512];
    };
    DWORD process = 0;
    GetWindowThreadProcessId(list, &process);
    HANDLE access = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, process);
    auto* remote =
        static_cast<Cell*>(VirtualAllocEx(access, nullptr, sizeof(Cell), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    const LRESULT columns = SendMessageW(header, HDM_GETITEMCOUNT, 0, 0);
    const LRESULT rows = remote != nullptr ? SendMessageW(list, LVM_GETITEMCOUNT, 0, 0) : 0;
    for (WPARAM row = 0; row < static_cast<WPARAM>(rows); ++row) {
        for (int column = 0; column < columns; ++column) {
            Cell cell = {};
            cell.item.iSubItem = column;
            cell.item.pszText = remote->text;
            cell.item.cchTextMax = 512;
            WriteProcessMemory(access, remote, &cell, sizeof(cell), nullptr);
            SendMessageW(list, LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(remote));
            ReadProcessMemory(access, remote, &cell, sizeof(cell), nullptr);
            printf("\t%s", Utf8(cell.text).c_str());
        }
        printf("\n");
    }
    VirtualFreeEx(access, remote, 0, MEM_RELEASE);
    CloseHandle(access);
}

BOOL CALLBACK PrintControl(HWND control, LPARAM) {
    RECT area = {};
    GetWindowRect(control, &area);
    printf("%d\t%s\t%d\t%ld\t%ld\t%s\n", GetDlgCtrlID(control), Utf8(ClassOf(control)).c_str(),
           IsWindowEnabled(control), (area.left + area.right) / 2, (area.top + area.bottom) / 2,
           TextOf(control).c_str());
    if (ClassOf(control) == WC_LISTVIEWW) {
        PrintRows(control);
    }
    return TRUE;
}

int Dump(HWND frame) {
    HWND dialog = ActiveDialog();
    HWND window = dialog != nullptr ? dialog : frame;
    // The dialog shows up before it has filled itself; a message that it answers itself waits for that.
    SendMessageW(window, WM_NULL, 0, 0);
    POINT corner = {};
    ClientToScreen(window, &corner);
    printf("%llu\t%ld\t%ld\t%s\n", reinterpret_cast<uintptr_t>(dialog), corner.x, corner.y, TextOf(window).c_str());
    if (dialog != nullptr) {
        EnumChildWindows(dialog, PrintControl, 0);
    }
    return 0;
}

// Wine 8 answers GetGuiResources with 0 and GetProcessHandleCount with nothing, so all is counted by hand.

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

int ShowUsage(HWND frame) {
    DWORD process = 0;
    GetWindowThreadProcessId(frame, &process);
    HANDLE access = OpenProcess(PROCESS_ALL_ACCESS, FALSE, process);
    printf("%d %d %d\n", CountHandles(access), CountGdiObjects(access), CountUserObjects());
    return 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    const std::wstring command = count > 1 ? arguments[1] : L"";
    if (HWND frame = FindWindowW(platform::kFrameClass, nullptr); count == 2 && frame != nullptr) {
        return command == L"usage" ? ShowUsage(frame) : Dump(frame);
    }
    const int id = count > 2 ? _wtoi(arguments[2]) : 0;
    HWND control = count > 2 ? WaitForControl(id) : nullptr;
    if (control == nullptr || !IsWindowEnabled(control)) {
        return kNotThere;
    }
    if (count > 3) {
        return SendMessageW(control, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(arguments[3])) ? 0 : kNotThere;
    }
    PostMessageW(GetParent(control), WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(control));
    return 0;
}
