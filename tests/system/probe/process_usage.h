// tests/system/probe/process_usage.h - what a process holds of the system, to find leaks.
#pragma once

#include <windows.h>

struct ProcessUsage {
    int handles;
    int gdiObjects;
    int userObjects;  // of all processes of the session: windows, menus, icons, cursors
    int threads;
    int kilobytes;  // resident
};

// The handle needs the rights to query, to read memory and to duplicate handles; this process is
// GetCurrentProcess().
ProcessUsage ReadUsage(HANDLE process);
