// adapters/internet_connection.h - getting an internet connection from the connection manager.
#pragma once

#include "platform/system.h"

// How to reach the internet, as the connection manager has it. Access types are those of InternetOpenW.
inline constexpr DWORD kAccessDirect = 1;
inline constexpr DWORD kAccessThroughProxy = 3;

struct InternetConnection {
    wchar_t proxy[256];  // counts for access through a proxy
    DWORD accessType;
    HANDLE connection;  // null: none was handed over, nothing to release
};

// Asks the connection manager for the internet and waits at most 12 s. 0 or another non-negative code on success, a
// negative HRESULT on failure; `out` then says direct access without a connection.
HRESULT EstablishInternetConnection(InternetConnection& out);
