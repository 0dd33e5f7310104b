// Wine's ntdll exports its version; Windows' own does not.

#include "platform/desktop/wine.h"

#include "platform/system.h"

namespace platform {

bool IsWine() {
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

}  // namespace platform
