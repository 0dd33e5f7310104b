// The network is the scripted services in the records of a 32-bit system: IP helper, echo, the wireless driver, names,
// connection manager and internet library.

#include "platform/ndis.h"
#include "tests/device/handheld.h"

#include <algorithm>

namespace {

// The size-then-data protocol of most calls: true, and zeros, when there is the room that the data need.
bool HasRoom(void* buffer, ULONG* size, size_t needed) {
    const bool fits = buffer != nullptr && *size >= needed;
    *size = static_cast<ULONG>(needed);
    if (fits) {
        memset(buffer, 0, needed);
    }
    return fits;
}

// IP_ADAPTER_INFO, texts and numbers by their places.
constexpr uint32_t kAdapterBytes = 640;
void WriteAdapter(uint8_t* info, const scripted::Adapter& a) {
    const std::pair<uint32_t, std::string> texts[] = {{8, a.name},          {268, a.description},  {432, a.address},
                                                      {448, a.mask},        {472, a.gateway},      {512, a.dhcpServer},
                                                      {556, a.primaryWins}, {596, a.secondaryWins}};
    const std::pair<uint32_t, uint64_t> numbers[] = {
        {400, a.hardwareAddress.size()}, {412, a.index},       {416, a.type}, {420, a.dhcpEnabled}, {548, a.haveWins},
        {632, a.leaseObtained},          {636, a.leaseExpires}};
    for (const auto& [place, text] : texts) {
        memcpy(info + place, text.data(), text.size());
    }
    for (const auto& [place, number] : numbers) {
        memcpy(info + place, &number, sizeof(uint32_t));
    }
    std::copy(a.hardwareAddress.begin(), a.hardwareAddress.end(), info + 404);
}

DWORD GetAdapters(uint8_t* buffer, ULONG* size) {
    const auto& adapters = scripted::system.adapters;
    if (adapters.empty()) {
        return ERROR_NO_DATA;
    }
    if (!HasRoom(buffer, size, adapters.size() * kAdapterBytes)) {
        return ERROR_BUFFER_OVERFLOW;
    }
    for (const scripted::Adapter& adapter : adapters) {
        WriteAdapter(buffer, adapter);
        const Address next = &adapter != &adapters.back() ? AddressAt(buffer + kAdapterBytes) : 0;
        memcpy(buffer, &next, sizeof(next));
        buffer += kAdapterBytes;
    }
    return NO_ERROR;
}

// IP_INTERFACE_INFO: a count, then an index and 128 units of name each.
DWORD GetInterfaces(uint32_t* buffer, ULONG* size) {
    constexpr uint32_t kRowBytes = 260;
    const auto& adapters = scripted::system.adapters;
    if (!HasRoom(buffer, size, 4 + std::max<size_t>(adapters.size(), 1) * kRowBytes)) {
        return ERROR_INSUFFICIENT_BUFFER;
    }
    *buffer = static_cast<uint32_t>(adapters.size());
    for (const scripted::Adapter& adapter : adapters) {
        buffer[1] = adapter.index;
        std::copy(adapter.name.begin(), adapter.name.end(), reinterpret_cast<char16_t*>(buffer + 2));
        buffer += kRowBytes / sizeof(*buffer);
    }
    return NO_ERROR;
}

// MIB_IFROW: letters of half the width come before what is alike.
DWORD GetInterfaceRow(uint8_t* row) {
    constexpr size_t kRest = sizeof(MIB_IFROW) - offsetof(MIB_IFROW, dwIndex);
    MIB_IFROW wide = {};
    memcpy(&wide.dwIndex, row + 512, kRest);
    const DWORD result = platform::GetIfEntry(&wide);
    memcpy(row + 512, &wide.dwIndex, kRest);
    return result;
}

// IP_PER_ADAPTER_INFO, whose list of name servers begins at 12; further ones stand behind it.
DWORD GetNameServers(uint32_t index, uint8_t* buffer, ULONG* size) {
    constexpr uint32_t kFirst = 12, kEntryBytes = 40;
    const auto& adapters = scripted::system.adapters;
    const auto found = std::find_if(adapters.begin(), adapters.end(), [&](const auto& a) { return a.index == index; });
    if (found == adapters.end()) {
        return ERROR_INVALID_PARAMETER;
    }
    if (!HasRoom(buffer, size, kFirst + found->dnsServers.size() * kEntryBytes)) {
        return ERROR_BUFFER_OVERFLOW;
    }
    uint8_t* entry = buffer + kFirst;
    for (const std::string& server : found->dnsServers) {
        const Address next = server != found->dnsServers.back() ? AddressAt(entry + kEntryBytes) : 0;
        memcpy(entry, &next, sizeof(next));
        memcpy(entry + 4, server.c_str(), server.size());
        entry += kEntryBytes;
    }
    return NO_ERROR;
}

// The binding's name behind a record of five words, or the value behind an identifier and the binding's name.
bool DeviceIoControl(uint64_t, uint32_t code, const uint32_t* in, uint32_t inBytes, uint32_t* out, uint32_t room,
                     uint32_t* done) {
    if (code == IOCTL_NDISUIO_QUERY_BINDING) {
        return platform::RadioIoControl(nullptr, code, out, inBytes, room, done);
    }
    const auto value = scripted::system.wireless.values.find(in[0]);
    if (Narrow(At<char16_t>(in[1])) != "WLAN1" || value == scripted::system.wireless.values.end()) {
        return false;
    }
    std::copy(value->second.begin(), value->second.end(), reinterpret_cast<uint8_t*>(out + 2));
    *done = static_cast<uint32_t>(8 + value->second.size());
    return true;
}

uint32_t Connect(uint64_t, const char16_t* host) {
    const std::string name = Narrow(host);
    scripted::system.internet.hosts.emplace_back(name.begin(), name.end());
    return NewHandle();
}

}  // namespace

StandInTable NetworkStandIns() {
    return {
        {"GetNumberOfInterfaces", platform::GetNumberOfInterfaces},
        {"GetAdaptersInfo", GetAdapters},
        {"GetInterfaceInfo", GetInterfaces},
        {"GetIfEntry", GetInterfaceRow},
        {"GetPerAdapterInfo", GetNameServers},
        {"GetIpNetTable", platform::GetIpNetTable},
        {"IpReleaseAddress", platform::IpReleaseAddress},
        {"IpRenewAddress", platform::IpRenewAddress},
        {"IcmpCreateFile", NewHandle},
        {"IcmpSendEcho", platform::IcmpSendEcho},
        {"DeviceIoControl", DeviceIoControl},
        {"WSAStartup", [](uint32_t, uint8_t* data) { return memset(data, 0, 400), 0; }},
        {"inet_addr", [](const char* text) { return inet_addr(text); }},
        {"htons", [](uint16_t value) { return htons(value); }},
        {"htonl", [](uint32_t value) { return htonl(value); }},
        {"ntohl", [](uint32_t value) { return ntohl(value); }},
        {"ConnMgrEstablishConnection",
         [](const uint32_t* request, uint32_t* connection) {
             return *connection = 0xC0, *request == 64 ? S_OK : E_FAIL;
         }},
        {"ConnMgrConnectionStatus",
         [](uint32_t, DWORD* status) { return platform::ConnMgrConnectionStatus(nullptr, status); }},
        {"ConnMgrProviderMessage", [] { return E_NOINTERFACE; }},
        {"InternetOpenW", NewHandle},
        {"InternetConnectW", Connect},
        {"HttpOpenRequestW", NewHandle},
        {"InternetReadFile", platform::InternetReadFile},
    };
}
