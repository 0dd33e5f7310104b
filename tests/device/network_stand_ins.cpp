// The network is the scripted services in the records of a 32-bit system: IP helper, echo, the wireless driver, names,
// connection manager and internet library.

#include "platform/ndis.h"
#include "tests/device/handheld.h"

#include <algorithm>

namespace {

// A record of the guest: numbers and texts by their places.
std::string Record(size_t bytes, const std::map<size_t, uint64_t>& numbers,
                   const std::map<size_t, std::string>& texts) {
    std::string record(bytes, 0);
    for (const auto& [place, number] : numbers) {
        memcpy(&record[place], &number, sizeof(uint32_t));
    }
    for (const auto& [place, text] : texts) {
        record.replace(place, text.size(), text);
    }
    return record;
}

// The protocol of most calls: how much room the data need, and the data when there is as much.
DWORD Give(const std::string& data, void* buffer, ULONG* size) {
    const bool fits = buffer != nullptr && *size >= data.size();
    *size = static_cast<ULONG>(data.size());
    if (fits) {
        memcpy(buffer, data.data(), data.size());
    }
    return fits ? NO_ERROR : ERROR_BUFFER_OVERFLOW;
}

// IP_ADAPTER_INFO of the only adapter.
DWORD GetAdapters(void* buffer, ULONG* size) {
    for (const scripted::Adapter& a : scripted::system.adapters) {
        // clang-format off
        return Give(Record(640,
            {{400, a.hardwareAddress.size()}, {412, a.index}, {416, a.type}, {420, a.dhcpEnabled}, {548, a.haveWins},
             {632, a.leaseObtained}, {636, a.leaseExpires}},
            {{8, a.name}, {268, a.description}, {404, {a.hardwareAddress.begin(), a.hardwareAddress.end()}},
             {432, a.address}, {448, a.mask}, {472, a.gateway}, {512, a.dhcpServer}, {556, a.primaryWins},
             {596, a.secondaryWins}}), buffer, size);
        // clang-format on
    }
    return ERROR_NO_DATA;
}

// IP_INTERFACE_INFO: a count, then an index and 128 units of name for each.
DWORD GetInterfaces(void* buffer, ULONG* size) {
    std::string list = Record(4, {{0, scripted::system.adapters.size()}}, {});
    for (const scripted::Adapter& adapter : scripted::system.adapters) {
        std::string wide;
        for (const char letter : adapter.name) {
            wide += {letter, 0};
        }
        list += Record(260, {{0, adapter.index}}, {{4, wide}});
    }
    return Give(list, buffer, size) == NO_ERROR ? NO_ERROR : ERROR_INSUFFICIENT_BUFFER;
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
DWORD GetNameServers(uint32_t, void* buffer, ULONG* size) {
    const std::vector<std::string>& servers = scripted::system.adapters[0].dnsServers;
    std::string list = Record(12, {}, {});
    for (const std::string& server : servers) {
        const Address next = server != servers.back() ? AddressAt(buffer) + list.size() + 40 : 0;
        list += Record(40, {{0, next}}, {{4, server}});
    }
    return Give(list, buffer, size);
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
        {"IcmpSendEcho", platform::IcmpSendEcho},
        {"DeviceIoControl", DeviceIoControl},
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
        {"InternetConnectW",
         [](uint64_t, const wchar_t* host) { return scripted::system.internet.hosts.push_back(host), NewHandle(); }},
        {"InternetReadFile", platform::InternetReadFile},
    };
}
