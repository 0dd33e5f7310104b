// DHCP facts, release and renew: the system's own on Windows, the Linux helper's under Wine.

#include "platform/desktop/lease.h"

#include "platform/adapters.h"
#include "platform/desktop/wine.h"
#include "platform/scoped.h"

namespace platform {
namespace {

using LeaseCall = DWORD(WINAPI*)(IP_ADAPTER_INDEX_MAP*);

// The system's calls want the interface's name in the system's own form, which the program never sees.
DWORD CallByIndex(LeaseCall call, ULONG index) {
    ULONG bytes = 0;
    if (const DWORD result = ::GetInterfaceInfo(nullptr, &bytes); result != ERROR_INSUFFICIENT_BUFFER) {
        return result;
    }
    const ScopedMemory memory(bytes);
    auto* table = memory.As<IP_INTERFACE_INFO>();
    if (table == nullptr) {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
    if (const DWORD result = ::GetInterfaceInfo(table, &bytes); result != NO_ERROR) {
        return result;
    }
    for (LONG i = 0; i < table->NumAdapters; ++i) {
        if (table->Adapter[i].Index == index) {
            return call(&table->Adapter[i]);
        }
    }
    return ERROR_FILE_NOT_FOUND;
}

}  // namespace

void CorrectLease(IP_ADAPTER_INFO& adapter) {
    if (!IsWine()) {
        return;
    }
    adapter.DhcpEnabled = FALSE;
    adapter.HaveWins = FALSE;
}

DWORD IpReleaseAddress(IP_ADAPTER_INDEX_MAP* adapter) {
    return IsWine() ? ERROR_NOT_SUPPORTED : CallByIndex(::IpReleaseAddress, adapter->Index);
}

DWORD IpRenewAddress(IP_ADAPTER_INDEX_MAP* adapter) {
    return IsWine() ? ERROR_NOT_SUPPORTED : CallByIndex(::IpRenewAddress, adapter->Index);
}

}  // namespace platform
