// diagnostics/ping.h - one ping, as the three lines that the dialog shows.
#pragma once

#include "platform/system.h"

struct PingLines {
    wchar_t status[160];
    wchar_t roundTrip[40];  // empty unless the host is alive
    wchar_t mac[48];        // empty unless the ARP table has a row of the host
};

// Resolves `host` (a dotted address or a name, in the ANSI code page), sends one echo and reads the ARP table. Blocks
// for up to timeoutMs and the resolver's own time. Winsock must have been started.
void PingHost(const char* host, DWORD timeoutMs, PingLines& lines);
