// The network is the scripted services in the records of a 32-bit system: IP helper, echo, the wireless driver, names,
// connection manager and internet library.

#include "tests/device/handheld.h"

#include <algorithm>

namespace {

using device_script::Host;

// IP_ADDR_STRING: a link, 16 characters of address and 16 of mask, a number.
constexpr uint32_t kEntryBytes = 40;
void WriteEntry(uint8_t* entry, const IP_ADDR_STRING& from) {
    memcpy(entry + 4, &from.IpAddress, sizeof(from.IpAddress) + sizeof(from.IpMask));
}

// The size-then-data protocol of most calls. The native records need no less room than a handheld's.
template <class Record>
DWORD Ask(DWORD (*function)(Record*, ULONG*), std::vector<Record>& records) {
    ULONG bytes = 0;
    function(nullptr, &bytes);
    records.resize(bytes / sizeof(Record) + 1);
    return function(records.data(), &bytes);
}

bool HasRoom(const void* buffer, ULONG* size, size_t needed) {
    const bool fits = buffer != nullptr && *size >= needed;
    *size = static_cast<ULONG>(needed);
    return fits;
}

// IP_ADAPTER_INFO: what has no pointers lies as it does natively.
void WriteAdapter(uint8_t* out, const IP_ADAPTER_INFO& from) {
    const uint32_t leases[] = {static_cast<uint32_t>(from.LeaseObtained), static_cast<uint32_t>(from.LeaseExpires)};
    memcpy(out + 4, &from.ComboIndex,
           offsetof(IP_ADAPTER_INFO, DhcpEnabled) + 4 - offsetof(IP_ADAPTER_INFO, ComboIndex));
    WriteEntry(out + 428, from.IpAddressList);
    WriteEntry(out + 468, from.GatewayList);
    WriteEntry(out + 508, from.DhcpServer);
    memcpy(out + 548, &from.HaveWins, 4);
    WriteEntry(out + 552, from.PrimaryWinsServer);
    WriteEntry(out + 592, from.SecondaryWinsServer);
    memcpy(out + 632, leases, sizeof(leases));
}

DWORD GetAdapters(uint8_t* buffer, ULONG* size) {
    constexpr uint32_t kBytes = 640;
    const size_t count = scripted::system.adapters.size();
    if (count == 0) {
        return ERROR_NO_DATA;
    }
    if (!HasRoom(buffer, size, count * kBytes)) {
        return ERROR_BUFFER_OVERFLOW;
    }
    std::vector<IP_ADAPTER_INFO> adapters;
    const DWORD result = Ask(platform::GetAdaptersInfo, adapters);
    memset(buffer, 0, count * kBytes);
    for (size_t i = 0; i < count; ++i, buffer += kBytes) {
        const Address next = i + 1 < count ? AddressAt(buffer + kBytes) : 0;
        memcpy(buffer, &next, sizeof(next));
        WriteAdapter(buffer, adapters[i]);
    }
    return result;
}

// IP_INTERFACE_INFO: a count, then an index and 128 units of name each.
DWORD GetInterfaces(uint32_t* buffer, ULONG* size) {
    constexpr uint32_t kRowBytes = 260;
    const auto& adapters = scripted::system.adapters;
    if (!HasRoom(buffer, size, 4 + std::max<size_t>(adapters.size(), 1) * kRowBytes)) {
        return ERROR_INSUFFICIENT_BUFFER;
    }
    memset(buffer, 0, *size);
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
    constexpr uint32_t kFirst = 12;
    const auto& adapters = scripted::system.adapters;
    const auto found = std::find_if(adapters.begin(), adapters.end(), [&](const auto& a) { return a.index == index; });
    if (found == adapters.end()) {
        return ERROR_INVALID_PARAMETER;
    }
    if (!HasRoom(buffer, size, kFirst + found->dnsServers.size() * kEntryBytes)) {
        return ERROR_BUFFER_OVERFLOW;
    }
    memset(buffer, 0, *size);
    uint8_t* entry = buffer + kFirst;
    for (const std::string& server : found->dnsServers) {
        const Address next = server != found->dnsServers.back() ? AddressAt(entry + kEntryBytes) : 0;
        memcpy(entry, &next, sizeof(next));
        memcpy(entry + 4, server.c_str(), server.size());
        entry += kEntryBytes;
    }
    return NO_ERROR;
}

BOOL SendEcho(uint64_t, uint32_t address, const void* data, uint16_t bytes, uint64_t, uint8_t* reply, uint32_t room,
              uint32_t timeoutMs) {
    if (room < sizeof(platform::EchoReply) + bytes ||
        platform::IcmpSendEcho(nullptr, address, data, bytes, nullptr, reply, room, timeoutMs) == 0) {
        return false;
    }
    memcpy(reply + sizeof(platform::EchoReply), data, bytes);
    return true;
}

// The binding's name behind a record of five words, or the value behind an identifier and the binding's name.
bool DeviceIoControl(uint64_t, uint32_t code, uint32_t* buffer, uint32_t inBytes, uint64_t, uint32_t room,
                     uint32_t* done) {
    if (code == IOCTL_NDISUIO_QUERY_BINDING) {
        return platform::RadioIoControl(nullptr, code, buffer, inBytes, room, done);
    }
    const auto value = scripted::system.wireless.values.find(buffer[0]);
    if (Narrow(At<char16_t>(buffer[1])) != "WLAN1" || value == scripted::system.wireless.values.end()) {
        return false;
    }
    std::copy(value->second.begin(), value->second.end(), reinterpret_cast<uint8_t*>(buffer + 2));
    *done = static_cast<uint32_t>(8 + value->second.size());
    return true;
}

// The entry belongs to Winsock: it lies behind what the script's messages point to.
Address GetHostByName(const char* name) {
    const Host* host = FindHostNamed(name);
    const Address entry = AddressAt(handheld->memory) + kPageBytes / 2;
    const uint32_t words[] = {0, 0, 0x00040002, entry + 16, entry + 24, 0, host != nullptr ? AddressOf(*host) : 0};
    memcpy(At<void>(entry), words, sizeof(words));
    return host != nullptr ? entry : 0;
}

void ReadBody(uint64_t, char* buffer, uint32_t room, DWORD* bytes) {
    std::string& rest = handheld->body;
    *bytes = static_cast<DWORD>(rest.copy(buffer, room));
    rest.erase(0, *bytes);
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
        {"IcmpCloseHandle", [] {}},
        {"IcmpSendEcho", SendEcho},
        {"DeviceIoControl", DeviceIoControl},
        {"WSAStartup", [](uint32_t, uint8_t* data) { return memset(data, 0, 400), 0; }},
        {"WSACleanup", [] { return 0; }},
        {"gethostbyname", GetHostByName},
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
        {"ConnMgrReleaseConnection", [] { return 0; }},
        {"ConnMgrProviderMessage", [] { return E_NOINTERFACE; }},
        {"InternetOpenW", NewHandle},
        {"InternetConnectW", NewHandle},
        {"HttpOpenRequestW", [] { return handheld->body = device_script::kEchoBody, NewHandle(); }},
        {"HttpSendRequestW", [] {}},
        {"InternetReadFile", ReadBody},
        {"InternetCloseHandle", [] {}},
    };
}
