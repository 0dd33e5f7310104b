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

}  // namespace

void RaiseKeyboard(HWND window) {
    AskForKeyboard(window, 1);
}

void LowerKeyboard(HWND window) {
    AskForKeyboard(window, 0);
}

bool InitFullScreenDialog(HWND dialog) {
    const SIZE screen = ScreenSize();
    LowerKeyboard(dialog);
    MoveDialog(dialog, 0, 0, screen.cx, screen.cy);
    return true;
}

bool StartProgram(const wchar_t* program, const wchar_t* arguments) {
    wchar_t commandLine[MAX_PATH];
    const size_t length = wcslen(arguments);
    if (length >= MAX_PATH) {
        return false;
    }
    memcpy(commandLine, arguments, (length + 1) * sizeof(wchar_t));
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(program, commandLine, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process)) {
        return false;
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

}  // namespace platform
