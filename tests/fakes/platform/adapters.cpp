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

namespace {

DWORD Result(const std::string& call, DWORD usual) {
    const auto found = system.results.find(call);
    return found == system.results.end() ? usual : found->second;
}

template <size_t Size>
void Copy(char (&out)[Size], const std::string& text) {
    out[text.copy(out, Size - 1)] = 0;
}

const Adapter* FindAdapter(uint32_t index) {
    const auto found = std::find_if(system.adapters.begin(), system.adapters.end(),
                                    [&](const Adapter& a) { return a.index == index; });
    return found == system.adapters.end() ? nullptr : &*found;
}

void Fill(IP_ADAPTER_INFO& info, const Adapter& adapter) {
    info = {};
    Copy(info.AdapterName, adapter.name);
    Copy(info.Description, adapter.description);
    info.AddressLength = static_cast<UINT>(adapter.hardwareAddress.size());
    std::copy(adapter.hardwareAddress.begin(), adapter.hardwareAddress.end(), info.Address);
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

// The size-then-data protocol: the size query answers `needsRoom`. Nothing when the data are to be filled in.
std::optional<DWORD> AnswerSize(const std::string& call, const void* buffer, ULONG* bytes, size_t needed,
                                DWORD needsRoom) {
    if (fakes::Fails(call.c_str())) {
        return ERROR_GEN_FAILURE;
    }
    if (buffer == nullptr || *bytes < needed) {
        *bytes = static_cast<ULONG>(needed);
        return Result(call + " size", needsRoom);
    }
    return std::nullopt;
}

DWORD ChangeAddress(const char* action, const std::string& call, uint32_t index) {
    system.dhcpCalls.emplace_back(action, index);
    return fakes::Fails(call.c_str()) ? ERROR_GEN_FAILURE : Result(call, NO_ERROR);
}

}  // namespace
}  // namespace scripted

namespace platform {

using namespace scripted;

DWORD GetNumberOfInterfaces(DWORD* count) {
    if (fakes::Fails("GetNumberOfInterfaces")) {
        return ERROR_GEN_FAILURE;
    }
    *count = static_cast<DWORD>(scripted::system.adapters.size());
    return NO_ERROR;
}

DWORD GetAdaptersInfo(IP_ADAPTER_INFO* list, ULONG* bytes) {
    const auto& adapters = scripted::system.adapters;
    if (adapters.empty()) {
        return ERROR_NO_DATA;
    }
    if (const auto answer =
            AnswerSize("GetAdaptersInfo", list, bytes, adapters.size() * sizeof(*list), ERROR_BUFFER_OVERFLOW)) {
        return *answer;
    }
    for (size_t i = 0; i < adapters.size(); ++i) {
        Fill(list[i], adapters[i]);
        list[i].Next = i + 1 < adapters.size() ? &list[i + 1] : nullptr;
    }
    return NO_ERROR;
}

DWORD GetInterfaceInfo(IP_INTERFACE_INFO* table, ULONG* bytes) {
    const auto& adapters = scripted::system.adapters;
    const size_t needed = sizeof(*table) + adapters.size() * sizeof(IP_ADAPTER_INDEX_MAP);
    if (const auto answer = AnswerSize("GetInterfaceInfo", table, bytes, needed, ERROR_INSUFFICIENT_BUFFER)) {
        return *answer;
    }
    table->NumAdapters = static_cast<LONG>(adapters.size());
    for (size_t i = 0; i < adapters.size(); ++i) {
        table->Adapter[i] = {};
        table->Adapter[i].Index = adapters[i].index;
        std::copy(adapters[i].name.begin(), adapters[i].name.end(), table->Adapter[i].Name);
    }
    return NO_ERROR;
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
    const size_t more = adapter->dnsServers.size() > 1 ? adapter->dnsServers.size() - 1 : 0;
    const size_t needed = sizeof(*info) + more * sizeof(IP_ADDR_STRING);
    if (const auto answer = AnswerSize("GetPerAdapterInfo", info, bytes, needed, ERROR_BUFFER_OVERFLOW)) {
        return *answer;
    }
    *info = {};
    IP_ADDR_STRING* entry = &info->DnsServerList;
    auto* next = reinterpret_cast<IP_ADDR_STRING*>(info + 1);
    for (const std::string& server : adapter->dnsServers) {
        if (&server != &adapter->dnsServers.front()) {
            entry = entry->Next = next++;
            *entry = {};
        }
        Copy(entry->IpAddress.String, server);
    }
    return NO_ERROR;
}

DWORD GetIpNetTable(MIB_IPNETTABLE* table, ULONG* bytes, BOOL) {
    const auto& rows = scripted::system.arp;
    const size_t needed = rows.empty() ? 0 : sizeof(*table) + rows.size() * sizeof(MIB_IPNETROW);
    if (const auto answer = AnswerSize("GetIpNetTable", table, bytes, needed, ERROR_INSUFFICIENT_BUFFER)) {
        return *answer;
    }
    table->dwNumEntries = static_cast<DWORD>(rows.size());
    for (size_t i = 0; i < rows.size(); ++i) {
        table->table[i] = {};
        table->table[i].dwAddr = rows[i].address;
        table->table[i].dwPhysAddrLen = static_cast<DWORD>(rows[i].hardwareAddress.size());
        std::copy(rows[i].hardwareAddress.begin(), rows[i].hardwareAddress.end(), table->table[i].bPhysAddr);
    }
    return NO_ERROR;
}

DWORD IpReleaseAddress(IP_ADAPTER_INDEX_MAP* adapter) {
    return ChangeAddress("release", "IpReleaseAddress", adapter->Index);
}

DWORD IpRenewAddress(IP_ADAPTER_INDEX_MAP* adapter) {
    return ChangeAddress("renew", "IpRenewAddress", adapter->Index);
}

}  // namespace platform
