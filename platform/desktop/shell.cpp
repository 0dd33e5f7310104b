// The handheld shell's services, played by the Today host's frame.

#include "platform/shell.h"

#include "platform/desktop/today_frame.h"
#include "platform/screen.h"

namespace platform {
namespace {

void AskForKeyboard(HWND window, WPARAM raise) {
    if (HWND frame = FindTodayFrame()) {
        SendMessageW(frame, kFrameKeyboardMessage, raise, reinterpret_cast<LPARAM>(window));
    }
}

// A handheld's own program ("\Windows\name.exe") is played by one of the same name beside the running program.
bool FindProgram(const wchar_t* program, wchar_t (&path)[MAX_PATH]) {
    const wchar_t* name = wcsrchr(program, L'\\');
    const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
    wchar_t* folderEnd = length > 0 && length < MAX_PATH ? wcsrchr(path, L'\\') : nullptr;
    if (name == nullptr || folderEnd == nullptr || static_cast<size_t>(folderEnd - path) + wcslen(name) >= MAX_PATH) {
        return false;
    }
    memcpy(folderEnd, name, (wcslen(name) + 1) * sizeof(wchar_t));
    return true;
}

}  // namespace

void RaiseKeyboard(HWND window) {
    AskForKeyboard(window, 1);
}

void LowerKeyboard(HWND window) {
    AskForKeyboard(window, 0);
}

// The taskbar stays in sight, as on a handheld.
bool InitFullScreenDialog(HWND dialog) {
    const SIZE screen = ScreenSize();
    RECT taskbar = {};
    if (HWND window = FindTaskbar()) {
        GetClientRect(window, &taskbar);
    }
    LowerKeyboard(dialog);
    MoveDialog(dialog, 0, taskbar.bottom, screen.cx, screen.cy - taskbar.bottom);
    return true;
}

bool StartProgram(const wchar_t* program, const wchar_t* arguments) {
    wchar_t path[MAX_PATH];
    wchar_t commandLine[MAX_PATH];
    const size_t length = wcslen(arguments);
    if (length >= MAX_PATH || !FindProgram(program, path)) {
        return false;
    }
    memcpy(commandLine, arguments, (length + 1) * sizeof(wchar_t));
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(path, commandLine, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
        return false;
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

}  // namespace platform
