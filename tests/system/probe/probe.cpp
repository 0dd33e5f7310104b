// probe.exe - reads and drives the dialogs of another program of the same session, for the system tests.
//
//   probe dump [SECONDS]       waits for a dialog that takes input (the topmost one; a message box is one, too) and
//                              prints its title, then for each control: id, class, "enabled" or "disabled", the x and
//                              y of its middle on the monitor, text, by tabs
//   probe press ID [SECONDS]   presses a button of that dialog; returns at once
//   probe set ID TEXT          puts a text into a control of it
//   probe rows ID              the rows of a list view in it, columns by tabs
//   probe send ID MESSAGE WPARAM LPARAM   sends a message to a control of it (ID 0: to the dialog), prints the result
//   probe post ID MESSAGE WPARAM LPARAM   the same without waiting for what it does
//   probe screenshot FILE      writes what the dialog shows as a bitmap
//   probe gone [SECONDS]       waits until no dialog takes input
//   probe top                  the dialog that takes input now (0: none), and where it, or else the Today host's
//                              screen, begins on the monitor: x, y
//   probe usage                what the Today host holds: handles, GDI objects, USER objects, threads, KB
//
// SECONDS is 10 without being given. Ends with 1 when what it waits for does not come, with 2 when it is called
// wrongly. Line ends and tabs inside a text come out as blanks.

#include "platform/desktop/today_frame.h"
#include "tests/system/probe/process_usage.h"

#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

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
        return 1;
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
        return 1;
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

// A 24-bit bitmap, bottom row first.
int Screenshot(HWND dialog, const wchar_t* path) {
    RECT area = {};
    GetWindowRect(dialog, &area);
    BITMAPINFOHEADER info = {};
    info.biSize = sizeof(info);
    info.biWidth = area.right - area.left;
    info.biHeight = area.bottom - area.top;
    info.biPlanes = 1;
    info.biBitCount = 24;
    const LONG stride = (info.biWidth * 3 + 3) & ~3L;
    std::vector<char> pixels(static_cast<size_t>(stride * info.biHeight));
    HDC source = GetWindowDC(dialog);
    HDC memory = CreateCompatibleDC(source);
    HBITMAP bitmap = CreateCompatibleBitmap(source, info.biWidth, info.biHeight);
    HGDIOBJ previous = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, info.biWidth, info.biHeight, source, 0, 0, SRCCOPY);
    SelectObject(memory, previous);
    GetDIBits(memory, bitmap, 0, static_cast<UINT>(info.biHeight), pixels.data(), reinterpret_cast<BITMAPINFO*>(&info),
              DIB_RGB_COLORS);
    FILE* file = _wfopen(path, L"wb");
    if (file == nullptr) {
        return 1;
    }
    const DWORD start = 14 + sizeof(info);
    const DWORD sizes[] = {start + static_cast<DWORD>(pixels.size()), 0, start};
    fwrite("BM", 1, 2, file);
    fwrite(sizes, 1, sizeof(sizes), file);
    fwrite(&info, 1, sizeof(info), file);
    fwrite(pixels.data(), 1, pixels.size(), file);
    fclose(file);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(dialog, source);
    return 0;
}

int WaitUntilGone(double seconds) {
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(seconds * 1000);
    while (ActiveDialog() != nullptr) {
        if (GetTickCount64() > end) {
            return 1;
        }
        Sleep(20);
    }
    return 0;
}

int ShowTop(HWND frame) {
    HWND dialog = ActiveDialog();
    POINT corner = {};
    ClientToScreen(dialog != nullptr ? dialog : frame, &corner);
    printf("%llu %ld %ld\n", reinterpret_cast<uintptr_t>(dialog), corner.x, corner.y);
    return 0;
}

int ShowUsage(HWND frame) {
    DWORD process = 0;
    GetWindowThreadProcessId(frame, &process);
    HANDLE access = OpenProcess(PROCESS_ALL_ACCESS, FALSE, process);
    const ProcessUsage usage = ReadUsage(access);
    printf("%d %d %d %d %d\n", usage.handles, usage.gdiObjects, usage.userObjects, usage.threads, usage.kilobytes);
    return 0;
}

int SendTo(HWND window, bool wait, wchar_t** arguments) {
    const auto message = static_cast<UINT>(wcstoul(arguments[0], nullptr, 0));
    const auto wParam = static_cast<WPARAM>(wcstoll(arguments[1], nullptr, 0));
    const auto lParam = static_cast<LPARAM>(wcstoll(arguments[2], nullptr, 0));
    if (!wait) {
        return PostMessageW(window, message, wParam, lParam) ? 0 : 1;
    }
    const LRESULT result = SendMessageW(window, message, wParam, lParam);
    printf("%lld\n", static_cast<long long>(result));
    return 0;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    constexpr double kPatience = 10;
    const std::wstring command = count > 1 ? arguments[1] : L"";
    const bool takesId =
        command == L"press" || command == L"set" || command == L"rows" || command == L"send" || command == L"post";
    const int secondsAt = takesId ? 3 : 2;
    const bool takesSeconds = command == L"dump" || command == L"press" || command == L"gone";
    const double seconds = takesSeconds && count > secondsAt ? wcstod(arguments[secondsAt], nullptr) : kPatience;
    if (command == L"gone") {
        return WaitUntilGone(seconds);
    }
    if (command == L"top" || command == L"usage") {
        HWND frame = FindWindowW(platform::kFrameClass, nullptr);
        return frame == nullptr ? 1 : command == L"top" ? ShowTop(frame) : ShowUsage(frame);
    }
    HWND dialog = WaitForDialog(seconds);
    if (dialog == nullptr) {
        return 1;
    }
    const int id = takesId && count > 2 ? _wtoi(arguments[2]) : 0;
    HWND control = id != 0 ? FindControl(dialog, id) : dialog;
    if (command == L"dump") {
        return Dump(dialog);
    }
    if (command == L"press" && count > 2) {
        return Press(control, id);
    }
    if (command == L"set" && count > 3) {
        return SendMessageW(control, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(arguments[3])) ? 0 : 1;
    }
    if (command == L"rows" && count > 2) {
        return PrintRows(control);
    }
    if ((command == L"send" || command == L"post") && count > 5) {
        return SendTo(control, command == L"send", arguments + 3);
    }
    if (command == L"screenshot" && count > 2) {
        return Screenshot(dialog, arguments[2]);
    }
    return 2;
}
