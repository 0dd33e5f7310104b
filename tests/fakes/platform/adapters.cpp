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

constexpr size_t kAddressCharacters = 15;

// Into a record of zeros.
void Fill(IP_ADAPTER_INFO& info, const Adapter& adapter) {
    adapter.name.copy(info.AdapterName, sizeof(info.AdapterName) - 1);
    adapter.description.copy(info.Description, sizeof(info.Description) - 1);
    info.AddressLength = static_cast<UINT>(adapter.hardwareAddress.size());
    std::ranges::copy(adapter.hardwareAddress, info.Address);
    info.Index = adapter.index;
    info.Type = adapter.type;
    info.DhcpEnabled = adapter.dhcpEnabled;
    info.CurrentIpAddress = &info.IpAddressList;
    adapter.address.copy(info.IpAddressList.IpAddress.String, kAddressCharacters);
    adapter.mask.copy(info.IpAddressList.IpMask.String, kAddressCharacters);
    adapter.gateway.copy(info.GatewayList.IpAddress.String, kAddressCharacters);
    adapter.dhcpServer.copy(info.DhcpServer.IpAddress.String, kAddressCharacters);
    info.HaveWins = adapter.haveWins;
    adapter.primaryWins.copy(info.PrimaryWinsServer.IpAddress.String, kAddressCharacters);
    adapter.secondaryWins.copy(info.SecondaryWinsServer.IpAddress.String, kAddressCharacters);
    info.LeaseObtained = adapter.leaseObtained;
    info.LeaseExpires = adapter.leaseExpires;
}

DWORD Result(const std::string& call, DWORD usual) {
    return fakes::Fails(call) ? ERROR_GEN_FAILURE : usual;
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
    if (servers.empty()) {
        return ERROR_NO_DATA;
    }
    const size_t needed = sizeof(*info) + servers.size() * sizeof(IP_ADDR_STRING);
    const DWORD result = AskForRoom("GetPerAdapterInfo", info, bytes, needed, ERROR_BUFFER_OVERFLOW);
    IP_ADDR_STRING* entry = result == NO_ERROR ? &info->DnsServerList : nullptr;  // the others follow the record
    for (size_t i = 0; result == NO_ERROR && i < servers.size(); ++i) {
        entry = i == 0 ? entry : (entry->Next = reinterpret_cast<IP_ADDR_STRING*>(info + 1) + i);
        servers[i].copy(entry->IpAddress.String, kAddressCharacters);
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
