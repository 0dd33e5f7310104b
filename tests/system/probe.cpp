// probe.exe - reads the dialogs of the Today host in the same session, for the system tests.
//
// Prints a line of the dialog that takes input now (the topmost one; a message box is one, too), or else of the host's
// screen: its number (0 for the screen), the x and y of its beginning on the monitor and its title, by tabs. Then one
// of each control of a dialog: id, the x and y of its middle on the monitor, text; behind a list view its rows, each
// column behind a tab. Line ends and tabs inside a text come out as blanks. Ends with 3 when there is no host.

#include "platform/desktop/today_frame.h"

#include <commctrl.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>

namespace {

std::string Utf8(std::wstring text) {
    std::ranges::replace_if(
        text, [](wchar_t c) { return c < L' '; }, L' ');
    char out[4096] = {};
    WideCharToMultiByte(CP_UTF8, 0, text.c_str(), -1, out, sizeof(out), nullptr, nullptr);
    return out;
}

std::string TextOf(HWND window) {
    wchar_t text[1024] = {};
    SendMessageW(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
    return Utf8(text);
}

bool HasClass(HWND window, const wchar_t* name) {
    wchar_t own[64] = {};
    GetClassNameW(window, own, 64);
    return std::wstring(own) == name;
}

BOOL CALLBACK KeepActiveDialog(HWND window, LPARAM found) {
    if (!HasClass(window, L"#32770") || !IsWindowVisible(window) || !IsWindowEnabled(window)) {
        return TRUE;
    }
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
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
    auto* remote = static_cast<Cell*>(VirtualAllocEx(access, nullptr, sizeof(Cell), MEM_COMMIT, PAGE_READWRITE));
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
    printf("%d\t%ld\t%ld\t%s\n", GetDlgCtrlID(control), (area.left + area.right) / 2, (area.top + area.bottom) / 2,
           TextOf(control).c_str());
    if (HasClass(control, WC_LISTVIEWW)) {
        PrintRows(control);
    }
    return TRUE;
}

}  // namespace

int main() {
    HWND frame = FindWindowW(platform::kFrameClass, nullptr);
    if (frame == nullptr) {
        return 3;
    }
    HWND dialog = nullptr;
    EnumWindows(KeepActiveDialog, reinterpret_cast<LPARAM>(&dialog));
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
