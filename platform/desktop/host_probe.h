// platform/desktop/host_probe.h - whether a TCP port can be reached, known in seconds.
#pragma once

#include "platform/system.h"

namespace platform {

// Connects and hangs up again; waits at most 3 s for the connection, behind however long the name's resolution takes.
bool CanReachHost(const wchar_t* host, WORD port);

// The same for the HTTP proxy of a proxy list (proxy_list.h). True where the list names none.
bool CanReachProxy(const wchar_t* proxyList);

}  // namespace platform
