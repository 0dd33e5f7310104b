// platform/device/ce_api.h - the handheld's own functions and records that no desktop header declares.
//
// Ordinary C functions of coredll and aygshell, linked by ordinal; names, values and layouts are the system's.
#pragma once

#include "platform/system.h"

extern "C" {

// coredll: the system has GetProcAddress for wide names only under this name.
FARPROC GetProcAddressW(HMODULE module, const wchar_t* name);

// aygshell, SHSipPreference: the soft input panel as `window` would like it.
enum SIPSTATE : int32_t { SIP_UP = 0, SIP_DOWN = 1 };
BOOL SHSipPreference(HWND window, SIPSTATE state);

// aygshell, SHInitDialog.
struct SHINITDLGINFO {
    DWORD dwMask;
    HWND hDlg;
    DWORD dwFlags;
};
BOOL SHInitDialog(SHINITDLGINFO* info);

}  // extern "C"

inline constexpr DWORD SHIDIM_FLAGS = 0x0001;
inline constexpr DWORD SHIDIF_DONEBUTTON = 0x0001;
inline constexpr DWORD SHIDIF_SIZEDLGFULLSCREEN = 0x0004;
inline constexpr DWORD SHIDIF_SIPDOWN = 0x0008;

// commctrl: flags and events of property sheets that only the handheld has.
inline constexpr DWORD PSH_MAXIMIZE = 0x00002000;
inline constexpr UINT PSCB_GETVERSION = 3;
inline constexpr int kCommonControlsVersion = 524;  // COMCTL32_VERSION there; desktop headers give 5
