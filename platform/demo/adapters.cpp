// The IP helper service of one made-up adapter, whose address can be released and renewed.

#include "platform/adapters.h"

#include "platform/demo/network.h"
#include "platform/demo/traffic.h"

#include <ctime>

namespace platform {
namespace {

constexpr DWORD kIndex = 7;
constexpr char kName[] = "DEMO1";
constexpr wchar_t kWideName[] = L"DEMO1";
constexpr char kDescription[] = "Demonstration adapter";

bool released = false;

template <size_t Room, size_t Length>
void Copy(char (&out)[Room], const char (&text)[Length]) {
    static_assert(Length <= Room);
    memcpy(out, text, Length);
}

void FillLease(IP_ADAPTER_INFO& info) {
    constexpr time_t kSecondsPerHour = 3600;
    const time_t now = time(nullptr);
    info.DhcpEnabled = TRUE;
    Copy(info.DhcpServer.IpAddress.String, demo::kGateway);
    info.LeaseObtained = now - now % kSecondsPerHour;
    info.LeaseExpires = info.LeaseObtained + 24 * kSecondsPerHour;
}

// Room for what a call returns: true when there is enough, else `bytes` says how much it takes.
bool HasRoom(const void* space, ULONG* bytes, size_t needed) {
    const bool enough = space != nullptr && *bytes >= needed;
    *bytes = static_cast<ULONG>(needed);
    return enough;
}

}  // namespace

DWORD GetNumberOfInterfaces(DWORD* count) {
    *count = 1;
    return NO_ERROR;
}

DWORD GetAdaptersInfo(IP_ADAPTER_INFO* list, ULONG* bytes) {
    constexpr uint8_t kHardwareAddress[] = {0x02, 0x0D, 0xE3, 0x00, 0x00, 0x14};
    if (!HasRoom(list, bytes, sizeof(*list))) {
        return ERROR_BUFFER_OVERFLOW;
    }
    *list = {};
    Copy(list->AdapterName, kName);
    Copy(list->Description, kDescription);
    list->AddressLength = sizeof(kHardwareAddress);
    memcpy(list->Address, kHardwareAddress, sizeof(kHardwareAddress));
    list->Index = kIndex;
    list->Type = MIB_IF_TYPE_ETHERNET;
    list->CurrentIpAddress = &list->IpAddressList;
    Copy(list->IpAddressList.IpAddress.String, "0.0.0.0");
    Copy(list->IpAddressList.IpMask.String, "0.0.0.0");
    FillLease(*list);
    if (!released) {
        Copy(list->IpAddressList.IpAddress.String, demo::kOwnAddress);
        Copy(list->IpAddressList.IpMask.String, demo::kMask);
        Copy(list->GatewayList.IpAddress.String, demo::kGateway);
    }
    return NO_ERROR;
}

DWORD GetInterfaceInfo(IP_INTERFACE_INFO* table, ULONG* bytes) {
    if (!HasRoom(table, bytes, sizeof(*table) + sizeof(IP_ADAPTER_INDEX_MAP))) {
        return ERROR_INSUFFICIENT_BUFFER;
    }
    table->NumAdapters = 1;
    table->Adapter[0] = {};
    table->Adapter[0].Index = kIndex;
    memcpy(table->Adapter[0].Name, kWideName, sizeof(kWideName));
    return NO_ERROR;
}

DWORD GetIfEntry(MIB_IFROW* row) {
    constexpr DWORD kSpeed = 54000000;
    if (row->dwIndex != kIndex) {
        return ERROR_INVALID_PARAMETER;
    }
    const demo::Octets octets = demo::CountOctets(demo::Elapsed());
    row->dwType = MIB_IF_TYPE_ETHERNET;
    row->dwSpeed = kSpeed;
    row->dwInOctets = octets.received;
    row->dwOutOctets = octets.transmitted;
    return NO_ERROR;
}

DWORD GetPerAdapterInfo(ULONG interfaceIndex, IP_PER_ADAPTER_INFO* info, ULONG* bytes) {
    if (interfaceIndex != kIndex) {
        return ERROR_INVALID_PARAMETER;
    }
    if (!HasRoom(info, bytes, sizeof(*info))) {
        return ERROR_BUFFER_OVERFLOW;
    }
    *info = {};
    Copy(info->DnsServerList.IpAddress.String, demo::kGateway);
    return NO_ERROR;
}

DWORD GetIpNetTable(MIB_IPNETTABLE* table, ULONG* bytes, BOOL) {
    const std::span<const demo::Host> hosts = demo::Hosts();
    if (!HasRoom(table, bytes, sizeof(*table) + hosts.size() * sizeof(MIB_IPNETROW))) {
        return ERROR_INSUFFICIENT_BUFFER;
    }
    table->dwNumEntries = static_cast<DWORD>(hosts.size());
    for (size_t i = 0; i < hosts.size(); ++i) {
        MIB_IPNETROW& row = table->table[i];
        row = {};
        row.dwIndex = kIndex;
        row.dwPhysAddrLen = sizeof(hosts[i].hardwareAddress);
        memcpy(row.bPhysAddr, hosts[i].hardwareAddress, sizeof(hosts[i].hardwareAddress));
        row.dwAddr = demo::AddressOf(hosts[i]);
    }
    return NO_ERROR;
}

DWORD IpReleaseAddress(IP_ADAPTER_INDEX_MAP*) {
    released = true;
    return NO_ERROR;
}

DWORD IpRenewAddress(IP_ADAPTER_INDEX_MAP*) {
    released = false;
    return NO_ERROR;
}

}  // namespace platform
