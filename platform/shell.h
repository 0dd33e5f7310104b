// platform/shell.h - the handheld's shell: the soft keyboard, full-screen dialogs, control-panel applets.
#pragma once

#include "platform/system.h"

namespace platform {

// Raises or lowers the soft input panel on behalf of `window`.
void RaiseKeyboard(HWND window);
void LowerKeyboard(HWND window);

// SHInitDialog with the done button, full-screen size and the input panel down. False when the shell refuses.
bool InitFullScreenDialog(HWND dialog);

// CreateProcessW with everything else default; does not wait. False when the program cannot be started.
bool StartProgram(const wchar_t* program, const wchar_t* arguments);

}  // namespace platform
