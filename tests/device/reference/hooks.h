// tests/device/reference/hooks.h - the program's own import table, changed so that what the product asks of the system
// is written down, and clock, folders, screen and peers are the script's.
#pragma once

#include "tests/device/player.h"

extern HWND hostWindow;

// Every call of that import becomes one of `stands`. What stood there stays `Original` (null: the program does not
// import it).
void Hook(const std::string& function, StandIn stands);
void* Original(const std::string& function);

// All that is compared is written down, and the script's answers stand in.
void HookSystem();

// Dialogs and property sheets, which the script drives without a message loop.
void HookDialogs();
uint64_t OpenPageOfSheet(uint32_t page);
void OpenOptionsDialog();

inline uint64_t Number(const void* handle) {
    return reinterpret_cast<uint64_t>(handle);
}

inline HWND Handle(uint64_t number) {
    return reinterpret_cast<HWND>(number);
}
