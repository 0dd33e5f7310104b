// DHCP facts, release and renew: the system's own on Windows, the Linux helper's under Wine.

#include "platform/desktop/lease.h"

#include "platform/adapters.h"
#include "platform/desktop/linux_helper.h"
#include "platform/desktop/wine.h"
#include "platform/format_text.h"
#include "platform/scoped.h"

namespace platform {
namespace {

using SystemCall = DWORD(WINAPI*)(IP_ADAPTER_INDEX_MAP*);

// The system's calls want the interface's name in the system's own form, which the program never sees.
DWORD CallSystem(SystemCall call, ULONG index) {
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

// Wine describes an interface by its Linux name.
DWORD CallHelper(DWORD (*call)(const char* interfaceName), ULONG index) {
    MIB_IFROW row = {};
    row.dwIndex = index;
    if (const DWORD result = ::GetIfEntry(&row); result != NO_ERROR) {
        return result;
    }
    char name[sizeof(row.bDescr) + 1] = {};
    memcpy(name, row.bDescr, sizeof(row.bDescr));
    return call(name);
}

// An unknown address is an empty text.
void SetAddress(IP_ADDR_STRING& field, uint32_t address) {
    field.IpAddress.String[0] = 0;
    if (address != 0) {
        FormatText(std::span<char>(field.IpAddress.String), "%d.%d.%d.%d", address >> 24, address >> 16 & 0xFF,
                   address >> 8 & 0xFF, address & 0xFF);
    }
}

}  // namespace

void CorrectLease(IP_ADAPTER_INFO& adapter) {
    if (!IsWine()) {
        return;
    }
    HelperLeaseState state;
    // Asking costs milliseconds, and only Ethernet adapters are ever shown.
    if (adapter.Type == MIB_IF_TYPE_ETHERNET) {
        HelperLease(adapter.Description, state);
    }
    adapter.DhcpEnabled = state.dhcp;
    SetAddress(adapter.DhcpServer, state.server);
    adapter.LeaseObtained = state.obtained;
    adapter.LeaseExpires = state.expires;
    adapter.HaveWins = state.winsPrimary != 0;
    SetAddress(adapter.PrimaryWinsServer, state.winsPrimary);
    SetAddress(adapter.SecondaryWinsServer, state.winsSecondary);
}

DWORD IpReleaseAddress(IP_ADAPTER_INDEX_MAP* adapter) {
    return IsWine() ? CallHelper(HelperRelease, adapter->Index) : CallSystem(::IpReleaseAddress, adapter->Index);
}

DWORD IpRenewAddress(IP_ADAPTER_INDEX_MAP* adapter) {
    return IsWine() ? CallHelper(HelperRenew, adapter->Index) : CallSystem(::IpRenewAddress, adapter->Index);
}

}  // namespace platform
