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
    const auto scripted = system.results.find(call);
    return fakes::Fails(call) ? ERROR_GEN_FAILURE : scripted != system.results.end() ? scripted->second : usual;
}

// The size-then-data protocol, whose size query answers `needsRoom`. Zeroed room and NO_ERROR when data are wanted.
DWORD AskForRoom(const std::string& call, void* buffer, ULONG* bytes, size_t needed, DWORD needsRoom) {
    if (buffer == nullptr || *bytes < needed) {
        *bytes = static_cast<ULONG>(needed);
        return Result(call + " size", needsRoom);
    }
    const DWORD result = Result(call, NO_ERROR);
    memset(buffer, 0, result == NO_ERROR ? needed : 0);
    return result;
}

}  // namespace

DWORD GetNumberOfInterfaces(DWORD* count) {
    const DWORD result = Result("GetNumberOfInterfaces", NO_ERROR);
    *count = result == NO_ERROR ? static_cast<DWORD>(system.adapters.size()) : *count;
    return result;
}

DWORD GetAdaptersInfo(IP_ADAPTER_INFO* list, ULONG* bytes) {
    const size_t count = system.adapters.size();
    if (count == 0) {
        return ERROR_NO_DATA;
    }
    const DWORD result = AskForRoom("GetAdaptersInfo", list, bytes, count * sizeof(*list), ERROR_BUFFER_OVERFLOW);
    for (size_t i = 0; result == NO_ERROR && i < count; ++i) {
        Fill(list[i], system.adapters[i]);
        list[i].Next = i + 1 < count ? &list[i + 1] : nullptr;
    }
    return result;
}

DWORD GetInterfaceInfo(IP_INTERFACE_INFO* table, ULONG* bytes) {
    const size_t needed = sizeof(*table) + system.adapters.size() * sizeof(IP_ADAPTER_INDEX_MAP);
    const DWORD result = AskForRoom("GetInterfaceInfo", table, bytes, needed, ERROR_INSUFFICIENT_BUFFER);
    for (size_t i = 0; result == NO_ERROR && i < system.adapters.size(); ++i) {
        IP_ADAPTER_INDEX_MAP& row = table->Adapter[table->NumAdapters++];
        row.Index = system.adapters[i].index;
        std::ranges::copy(system.adapters[i].name, row.Name);
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
    const auto& servers = adapter->dnsServers;
    const size_t needed = sizeof(*info) + servers.size() * sizeof(IP_ADDR_STRING);
    const DWORD result = AskForRoom("GetPerAdapterInfo", info, bytes, needed, ERROR_BUFFER_OVERFLOW);
    IP_ADDR_STRING* entry = result == NO_ERROR ? &info->DnsServerList : nullptr;  // the others follow the record
    for (size_t i = 0; result == NO_ERROR && i < servers.size(); ++i) {
        entry = i == 0 ? entry : (entry->Next = reinterpret_cast<IP_ADDR_STRING*>(info + 1) + i);
        Copy(entry->IpAddress.String, servers[i]);
    }
    return result;
}

DWORD GetIpNetTable(MIB_IPNETTABLE* table, ULONG* bytes, BOOL) {
    const size_t needed = system.arp.empty() ? 0 : sizeof(*table) + system.arp.size() * sizeof(MIB_IPNETROW);
    const DWORD result = AskForRoom("GetIpNetTable", table, bytes, needed, ERROR_INSUFFICIENT_BUFFER);
    for (size_t i = 0; result == NO_ERROR && i < system.arp.size(); ++i) {
        MIB_IPNETROW& row = table->table[table->dwNumEntries++];
        row.dwAddr = system.arp[i].address;
        row.dwPhysAddrLen = static_cast<DWORD>(system.arp[i].hardwareAddress.size());
        std::ranges::copy(system.arp[i].hardwareAddress, row.bPhysAddr);
    }
    return result;
}

DWORD IpReleaseAddress(IP_ADAPTER_INDEX_MAP* adapter) {
    system.dhcpCalls.emplace_back("release", adapter->Index);
    return Result("IpReleaseAddress", NO_ERROR);
}

DWORD IpRenewAddress(IP_ADAPTER_INDEX_MAP* adapter) {
    system.dhcpCalls.emplace_back("renew", adapter->Index);
    return Result("IpRenewAddress", NO_ERROR);
}

}  // namespace platform
