// The network is the scripted services in the records of a 32-bit system: IP helper, echo, the wireless driver, names,
// connection manager and internet library.

#include "platform/ndis.h"
#include "tests/device/handheld.h"

#include <algorithm>

namespace {

// Fills a record, numbers and texts by their places, or tells how much room it needs.
bool Give(uint8_t* buffer, ULONG* size, ULONG bytes, const std::map<size_t, uint64_t>& numbers,
          const std::map<size_t, std::string>& texts) {
    const bool fits = buffer != nullptr && *size >= bytes;
    *size = bytes;
    for (auto number = numbers.begin(); fits && number != numbers.end(); ++number) {
        memcpy(buffer + number->first, &number->second, sizeof(uint32_t));
    }
    for (auto text = texts.begin(); fits && text != texts.end(); ++text) {
        text->second.copy(reinterpret_cast<char*>(buffer + text->first), text->second.size());
    }
    return fits;
}

// IP_ADAPTER_INFO of the only adapter.
DWORD GetAdapters(uint8_t* buffer, ULONG* size) {
    for (const scripted::Adapter& a : scripted::system.adapters) {
        // clang-format off
        const bool fits = Give(buffer, size, 640,
            {{400, a.hardwareAddress.size()}, {412, a.index}, {416, a.type}, {420, a.dhcpEnabled}, {548, a.haveWins},
             {632, a.leaseObtained}, {636, a.leaseExpires}},
            {{8, a.name}, {268, a.description}, {404, {a.hardwareAddress.begin(), a.hardwareAddress.end()}},
             {432, a.address}, {448, a.mask}, {472, a.gateway}, {512, a.dhcpServer}, {556, a.primaryWins},
             {596, a.secondaryWins}});
        // clang-format on
        return fits ? NO_ERROR : ERROR_BUFFER_OVERFLOW;
    }
    return ERROR_NO_DATA;
}

// IP_INTERFACE_INFO: a count, then index and name (UTF-16) of the only adapter.
DWORD GetInterfaces(uint8_t* buffer, ULONG* size) {
    const size_t count = scripted::system.adapters.size();
    const uint32_t index = count != 0 ? scripted::system.adapters[0].index : 0;
    const bool fits = Give(buffer, size, 264, {{0, count}, {4, index}}, {{8, {"W\0L\0A\0N\0001", 9}}});
    return fits ? NO_ERROR : ERROR_INSUFFICIENT_BUFFER;
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

// The binding's name behind a record of five words, or the value behind an identifier and the binding's name.
bool DeviceIoControl(uint64_t, uint32_t code, const uint32_t* in, uint32_t inBytes, uint32_t* out, uint32_t room,
                     uint32_t* done) {
    if (code == IOCTL_NDISUIO_QUERY_BINDING) {
        return platform::RadioIoControl(nullptr, code, out, inBytes, room, done);
    }
    const auto value = scripted::system.wireless.values.find(in[0]);
    if (Narrow(At<char16_t>(in[1])) != "w" || value == scripted::system.wireless.values.end()) {
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
        {"GetIpNetTable", platform::GetIpNetTable},
        {"IpReleaseAddress", platform::IpReleaseAddress},
        {"IpRenewAddress", platform::IpRenewAddress},
        {"IcmpSendEcho", platform::IcmpSendEcho},
        {"DeviceIoControl", DeviceIoControl},
        {"inet_addr", [](const char* text) { return inet_addr(text); }},
        {"htons", [](uint16_t value) { return htons(value); }},
        {"htonl", [](uint32_t value) { return htonl(value); }},
        {"ntohl", [](uint32_t value) { return ntohl(value); }},
        {"ConnMgrConnectionStatus",
         [](uint32_t, DWORD* status) { return platform::ConnMgrConnectionStatus(nullptr, status); }},
        {"InternetConnectW",
         [](uint64_t, const wchar_t* host) { return scripted::system.internet.hosts.push_back(host), NewHandle(); }},
        {"InternetReadFile", platform::InternetReadFile},
    };
}
