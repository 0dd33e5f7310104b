// The IP helper service from the scripted adapters.

#include "platform/adapters.h"

#include <algorithm>

#include "tests/fakes/faults.h"
#include "tests/fakes/scripted_platform.h"

namespace scripted {

Platform system;

void Reset() {
    system = {};
}

}  // namespace scripted

namespace platform {

using scripted::Adapter;
using scripted::system;

namespace {

const Adapter* FindAdapter(uint32_t index) {
    const auto found = std::ranges::find(system.adapters, index, &Adapter::index);
    return found == system.adapters.end() ? nullptr : &*found;
}

// Into a record of zeros, whose last one stays.
template <size_t Size>
void Copy(char (&out)[Size], const std::string& text) {
    text.copy(out, Size - 1);
}

void Fill(IP_ADAPTER_INFO& info, const Adapter& adapter) {
    info = {};
    Copy(info.AdapterName, adapter.name);
    Copy(info.Description, adapter.description);
    info.AddressLength = static_cast<UINT>(adapter.hardwareAddress.size());
    std::ranges::copy(adapter.hardwareAddress, info.Address);
    info.Index = adapter.index;
    info.Type = adapter.type;
    info.DhcpEnabled = adapter.dhcpEnabled;
    info.CurrentIpAddress = &info.IpAddressList;
    Copy(info.IpAddressList.IpAddress.String, adapter.address);
    Copy(info.IpAddressList.IpMask.String, adapter.mask);
    Copy(info.GatewayList.IpAddress.String, adapter.gateway);
    Copy(info.DhcpServer.IpAddress.String, adapter.dhcpServer);
    info.HaveWins = adapter.haveWins;
    Copy(info.PrimaryWinsServer.IpAddress.String, adapter.primaryWins);
    Copy(info.SecondaryWinsServer.IpAddress.String, adapter.secondaryWins);
    info.LeaseObtained = adapter.leaseObtained;
    info.LeaseExpires = adapter.leaseExpires;
}

DWORD Result(const std::string& call, DWORD usual) {
    return fakes::Fails(call) ? ERROR_GEN_FAILURE : system.results.contains(call) ? system.results[call] : usual;
}

// The size-then-data protocol, whose size query answers `needsRoom`. NO_ERROR when the data are to be filled in.
DWORD AskForRoom(const std::string& call, const void* buffer, ULONG* bytes, size_t needed, DWORD needsRoom) {
    if (buffer != nullptr && *bytes >= needed) {
        return Result(call, NO_ERROR);
    }
    *bytes = static_cast<ULONG>(needed);
    return Result(call + " size", needsRoom);
}

DWORD ChangeAddress(const char* action, const char* call, const IP_ADAPTER_INDEX_MAP* adapter) {
    system.dhcpCalls.emplace_back(action, adapter->Index);
    return Result(call, NO_ERROR);
}

}  // namespace

DWORD GetNumberOfInterfaces(DWORD* count) {
    const DWORD result = Result("GetNumberOfInterfaces", NO_ERROR);
    *count = result == NO_ERROR ? static_cast<DWORD>(system.adapters.size()) : *count;
    return result;
}

DWORD GetAdaptersInfo(IP_ADAPTER_INFO* list, ULONG* bytes) {
    const size_t count = system.adapters.size();
    const DWORD result = count == 0
                             ? static_cast<DWORD>(ERROR_NO_DATA)
                             : AskForRoom("GetAdaptersInfo", list, bytes, count * sizeof(*list), ERROR_BUFFER_OVERFLOW);
    for (size_t i = 0; result == NO_ERROR && i < count; ++i) {
        Fill(list[i], system.adapters[i]);
        list[i].Next = i + 1 < count ? &list[i + 1] : nullptr;
    }
    return result;
}

DWORD GetInterfaceInfo(IP_INTERFACE_INFO* table, ULONG* bytes) {
    const size_t needed = sizeof(*table) + system.adapters.size() * sizeof(IP_ADAPTER_INDEX_MAP);
    const DWORD result = AskForRoom("GetInterfaceInfo", table, bytes, needed, ERROR_INSUFFICIENT_BUFFER);
    if (result == NO_ERROR) {
        table->NumAdapters = 0;
        for (const Adapter& adapter : system.adapters) {
            IP_ADAPTER_INDEX_MAP& row = table->Adapter[table->NumAdapters++];
            row = {};
            row.Index = adapter.index;
            std::ranges::copy(adapter.name, row.Name);
        }
    }
    return result;
}

DWORD GetIfEntry(MIB_IFROW* row) {
    const Adapter* adapter = FindAdapter(row->dwIndex);
    if (fakes::Fails("GetIfEntry") || adapter == nullptr) {
        return ERROR_INVALID_PARAMETER;
    }
    row->dwType = adapter->type;
    row->dwSpeed = adapter->speed;
    row->dwInOctets = adapter->received;
    row->dwOutOctets = adapter->transmitted;
    return NO_ERROR;
}

DWORD GetPerAdapterInfo(ULONG interfaceIndex, IP_PER_ADAPTER_INFO* info, ULONG* bytes) {
    const Adapter* adapter = FindAdapter(interfaceIndex);
    if (adapter == nullptr) {
        return ERROR_INVALID_PARAMETER;
    }
    const size_t needed = sizeof(*info) + adapter->dnsServers.size() * sizeof(IP_ADDR_STRING);
    const DWORD result = AskForRoom("GetPerAdapterInfo", info, bytes, needed, ERROR_BUFFER_OVERFLOW);
    if (result == NO_ERROR) {
        *info = {};
        IP_ADDR_STRING* entry = &info->DnsServerList;
        auto* next = reinterpret_cast<IP_ADDR_STRING*>(info + 1);
        for (const std::string& server : adapter->dnsServers) {
            Copy(entry->IpAddress.String, server);
            if (&server != &adapter->dnsServers.back()) {
                entry = entry->Next = new (next++) IP_ADDR_STRING();
            }
        }
    }
    return result;
}

DWORD GetIpNetTable(MIB_IPNETTABLE* table, ULONG* bytes, BOOL) {
    const size_t needed = system.arp.empty() ? 0 : sizeof(*table) + system.arp.size() * sizeof(MIB_IPNETROW);
    const DWORD result = AskForRoom("GetIpNetTable", table, bytes, needed, ERROR_INSUFFICIENT_BUFFER);
    if (result == NO_ERROR) {
        table->dwNumEntries = 0;
        for (const scripted::ArpRow& known : system.arp) {
            MIB_IPNETROW& row = table->table[table->dwNumEntries++];
            row = {};
            row.dwAddr = known.address;
            row.dwPhysAddrLen = static_cast<DWORD>(known.hardwareAddress.size());
            std::ranges::copy(known.hardwareAddress, row.bPhysAddr);
        }
    }
    return result;
}

DWORD IpReleaseAddress(IP_ADAPTER_INDEX_MAP* adapter) {
    return ChangeAddress("release", "IpReleaseAddress", adapter);
}

DWORD IpRenewAddress(IP_ADAPTER_INDEX_MAP* adapter) {
    return ChangeAddress("renew", "IpRenewAddress", adapter);
}

}  // namespace platform
