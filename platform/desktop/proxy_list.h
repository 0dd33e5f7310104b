// platform/desktop/proxy_list.h - the internet library's text form of its proxies.
#pragma once

#include "platform/system.h"

namespace platform {

inline constexpr size_t kProxyHostUnits = 240;

// Host and port of the proxy for HTTP in a list of entries "[http=][http://]host[:port]" that are separated by blanks
// or semicolons; without a port it is 80. False when there is none.
bool FindHttpProxy(const wchar_t* list, wchar_t (&host)[kProxyHostUnits], WORD* port);

}  // namespace platform
