// The handheld's shell by its own functions.

#include "platform/shell.h"

#include "platform/device/ce_api.h"

namespace platform {

void RaiseKeyboard(HWND window) {
    SHSipPreference(window, SIP_UP);
}

void LowerKeyboard(HWND window) {
    SHSipPreference(window, SIP_DOWN);
}

bool InitFullScreenDialog(HWND dialog) {
    SHINITDLGINFO info = {};
    info.dwMask = SHIDIM_FLAGS;
    info.hDlg = dialog;
    info.dwFlags = SHIDIF_DONEBUTTON | SHIDIF_SIZEDLGFULLSCREEN | SHIDIF_SIPDOWN;
    return SHInitDialog(&info) != FALSE;
}

// The handheld has neither environment nor current directory nor start-up record, and it does not write to the command
// line.
bool StartProgram(const wchar_t* program, const wchar_t* arguments) {
    PROCESS_INFORMATION process = {};
    if (!CreateProcessW(program, const_cast<wchar_t*>(arguments), nullptr, nullptr, FALSE, 0, nullptr, nullptr, nullptr,
                        &process)) {
        return false;
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

}  // namespace platform
