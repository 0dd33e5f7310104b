// shlobj.h of the native build: the special folders.
#pragma once

#include "windows.h"

#define CSIDL_PERSONAL 5
#define CSIDL_PROGRAM_FILES 0x26
BOOL SHGetSpecialFolderPathW(HWND owner, wchar_t* path, int folder, BOOL create);
