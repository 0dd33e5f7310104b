// probe.exe - reads and drives the dialogs of another program of the same session, for the system tests.
//
//   probe dump [SECONDS]       waits for a dialog that takes input (the topmost one; a message box is one, too) and
//                              prints its title, then for each control: id, class, "enabled" or "disabled", the x and
//                              y of its middle on the monitor, text, by tabs
//   probe press ID             presses a button of that dialog; returns at once
//   probe set ID TEXT          puts a text into a control of it
//   probe rows ID              the rows of a list view in it, columns by tabs
//   probe top                  the dialog that takes input now (0: none), and where it, or else the Today host's
//                              screen, begins on the monitor: x, y
//   probe usage                what the Today host holds: handles, GDI objects; and the session's USER objects
//
// SECONDS is 10 without being given. Ends with 3 when what it asks for is not there, with 2 when it is called wrongly,
// and never with 1, with which Wine ends programs that it failed to start. Line ends and tabs inside a text come out as
// blanks.

#include "platform/desktop/today_frame.h"

#include <commctrl.h>
#include <winternl.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr int kNotThere = 3;

std::string Utf8(std::wstring text) {
    for (wchar_t& c : text) {
        c = c < L' ' ? L' ' : c;
    }
    const int length = static_cast<int>(text.size());
    std::string out(text.size() * 3, '\0');
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, text.c_str(), length, out.data(), static_cast<int>(out.size()),
                                          nullptr, nullptr);
    out.resize(static_cast<size_t>(bytes));
    return out;
}

std::string TextOf(HWND window) {
    std::wstring text(4096, L'\0');
    const LRESULT length = SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<size_t>(length));
    return Utf8(text);
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

// Null after that time.
HWND WaitForDialog(double seconds) {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(seconds * 1000);
    HWND dialog = ActiveDialog();
    while (dialog == nullptr && GetTickCount64() < end) {
        Sleep(20);
        dialog = ActiveDialog();
    }
    return dialog;
}

BOOL CALLBACK PrintControl(HWND control, LPARAM) {
    RECT area = {};
    GetWindowRect(control, &area);
    printf("%d\t%s\t%s\t%ld\t%ld\t%s\n", GetDlgCtrlID(control), Utf8(ClassOf(control)).c_str(),
           IsWindowEnabled(control) ? "enabled" : "disabled", (area.left + area.right) / 2,
           (area.top + area.bottom) / 2, TextOf(control).c_str());
    return TRUE;
}

// Also on the page of a property sheet.
HWND FindControl(HWND dialog, int id) {
    HWND found = GetDlgItem(dialog, id);
    HWND page = nullptr;
    while (found == nullptr && (page = FindWindowExW(dialog, page, L"#32770", nullptr)) != nullptr) {
        found = IsWindowVisible(page) ? GetDlgItem(page, id) : nullptr;
    }
    return found;
}

int Dump(HWND dialog) {
    // The dialog shows up before it has filled itself; a message that it answers itself waits for that.
    SendMessageW(dialog, WM_NULL, 0, 0);
    printf("%s\n", TextOf(dialog).c_str());
    EnumChildWindows(dialog, PrintControl, 0);
    return 0;
}

int Press(HWND button, int id) {
    if (button == nullptr || !IsWindowEnabled(button)) {
        return kNotThere;
    }
    PostMessageW(GetParent(button), WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(button));
    return 0;
}

// Cells are read through memory of the other process: list-view messages carry pointers as they are.
int PrintRows(HWND list) {
    struct Cell {
        LVITEMW item;
        wchar_t text[512];
    };
    DWORD process = 0;
    GetWindowThreadProcessId(list, &process);
    HANDLE access = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, process);
    auto* remote =
        static_cast<Cell*>(VirtualAllocEx(access, nullptr, sizeof(Cell), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    if (remote == nullptr) {
        return kNotThere;
    }
    const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
    const LRESULT columns = SendMessageW(header, HDM_GETITEMCOUNT, 0, 0);
    const LRESULT rows = SendMessageW(list, LVM_GETITEMCOUNT, 0, 0);
    for (WPARAM row = 0; row < static_cast<WPARAM>(rows); ++row) {
        for (int column = 0; column < columns; ++column) {
            Cell cell = {};
            cell.item.iSubItem = column;
            cell.item.pszText = remote->text;
            cell.item.cchTextMax = 512;
            WriteProcessMemory(access, remote, &cell, sizeof(cell), nullptr);
            SendMessageW(list, LVM_GETITEMTEXTW, row, reinterpret_cast<LPARAM>(remote));
            ReadProcessMemory(access, remote, &cell, sizeof(cell), nullptr);
            printf("%s%s", column > 0 ? "\t" : "", Utf8(cell.text).c_str());
        }
        printf("\n");
    }
    VirtualFreeEx(access, remote, 0, MEM_RELEASE);
    CloseHandle(access);
    return 0;
}

int ShowTop(HWND frame) {
    HWND dialog = ActiveDialog();
    POINT corner = {};
    ClientToScreen(dialog != nullptr ? dialog : frame, &corner);
    printf("%llu %ld %ld\n", reinterpret_cast<uintptr_t>(dialog), corner.x, corner.y);
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
    constexpr double kPatience = 10;
    const std::wstring command = count > 1 ? arguments[1] : L"";
    HWND frame = FindWindowW(platform::kFrameClass, nullptr);
    if (command == L"top" || command == L"usage") {
        return frame == nullptr ? kNotThere : command == L"top" ? ShowTop(frame) : ShowUsage(frame);
    }
    const bool dump = command == L"dump";
    HWND dialog = WaitForDialog(dump && count > 2 ? wcstod(arguments[2], nullptr) : kPatience);
    if (dialog == nullptr) {
        return kNotThere;
    }
    if (dump) {
        return Dump(dialog);
    }
    const int id = count > 2 ? _wtoi(arguments[2]) : 0;
    HWND control = FindControl(dialog, id);
    if (command == L"press") {
        return Press(control, id);
    }
    if (command == L"rows") {
        return PrintRows(control);
    }
    if (command == L"set" && count > 3) {
        return SendMessageW(control, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(arguments[3])) ? 0 : kNotThere;
    }
    return 2;
}
