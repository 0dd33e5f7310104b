// tests/device/reference/hooks.h - the program's own import table, changed so that what the product asks of the system
// is written down, and clock, folders, screen and peers are the script's.
#pragma once

#include "platform/controls.h"

#include "tests/device/player.h"

// The player that the program runs; the hooks write into its trace.
extern Player* player;
extern HWND hostWindow;

// Puts `replacement` into every import of that name; gives what stood there (null: the program does not import it).
void* ReplaceImport(const char* function, void* replacement);

// Drawing, timers and the like: the calls are made as before and written down.
void RecordCalls();

// Local time, special folders, screen, sockets, threads one after the other.
void ScriptSystem();

// Dialogs, property sheets and message boxes, which the script drives without a message loop.
void ScriptDialogs();
uint64_t OpenPageOfSheet(uint32_t page);
void OpenOptionsDialog();
std::vector<ControlState> ControlsOf(HWND dialog);

inline uint64_t Number(const void* handle) {
    return reinterpret_cast<uint64_t>(handle);
}

inline HWND Handle(uint64_t number) {
    return reinterpret_cast<HWND>(number);
}

inline std::string TextOf(const wchar_t* text) {
    return player->trace.TextAt(Number(text));
}

// For tables of replacements.
template <class Function>
void* Pointer(Function function) {
    return reinterpret_cast<void*>(+function);
}

// Writes a call down from within its replacement.
template <class... Values>
void NoteCall(const char* function, Values... values) {
    const uint64_t arguments[] = {(uint64_t)values...};
    player->trace.Note(ShapeOf(function), arguments);
}
