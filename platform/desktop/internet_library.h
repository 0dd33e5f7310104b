// platform/desktop/internet_library.h - the functions of wininet.dll that are used, found when they are first needed:
// linked to, the library would cost every start of the Today screen some 50 ms under Wine.
#pragma once

#include "platform/system.h"

#include <wininet.h>

namespace platform {

struct InternetLibrary {
    decltype(&::InternetOpenW) open;
    decltype(&::InternetConnectW) connect;
    decltype(&::HttpOpenRequestW) openRequest;
    decltype(&::HttpSendRequestW) sendRequest;
    decltype(&::InternetReadFile) readFile;
    decltype(&::InternetSetOptionW) setOption;
    decltype(&::InternetQueryOptionW) queryOption;
    decltype(&::InternetCloseHandle) closeHandle;
};

// False when the library or one of its functions is missing. The library then stays in the process.
bool FindInternetLibrary(InternetLibrary& library);

}  // namespace platform
