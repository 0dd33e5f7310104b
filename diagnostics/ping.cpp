// Resolve, echo, describe.

#include "diagnostics/ping.h"

#include "diagnostics/arp_lookup.h"
#include "diagnostics/echo_request.h"
#include "platform/format_text.h"

#include <algorithm>

namespace {

// A literal is never looked up. False when the name is unknown.
bool ResolveHost(const char* host, uint32_t* address) {
    *address = inet_addr(host);
    if (*address != INADDR_NONE) {
        return true;
    }
    const hostent* found = gethostbyname(host);
    if (found == nullptr || found->h_addr_list[0] == nullptr) {
        return false;
    }
    memcpy(address, found->h_addr_list[0], sizeof(*address));
    return true;
}

void DescribeHardwareAddress(uint32_t address, PingLines& lines) {
    MIB_IPNETROW row = {};
    if (!FindArpRow(address, row)) {
        return;
    }
    FormatText(lines.mac, L"MAC Address: ");
    const DWORD length = std::min<DWORD>(row.dwPhysAddrLen, MAXLEN_PHYSADDR);
    for (DWORD i = 0; i < length; ++i) {
        AppendText(lines.mac, L"%s%02X", i == 0 ? L"" : L":", row.bPhysAddr[i]);
    }
}

void DescribeAliveHost(uint32_t address, uint32_t roundTripMs, PingLines& lines) {
    uint8_t bytes[4];
    memcpy(bytes, &address, sizeof(bytes));
    FormatText(lines.status, L"Host (%d.%d.%d.%d) is alive", bytes[0], bytes[1], bytes[2], bytes[3]);
    FormatText(lines.roundTrip, L"Round Trip Time: %d ms", roundTripMs);
    DescribeHardwareAddress(address, lines);
}

}  // namespace

void PingHost(const char* host, DWORD timeoutMs, PingLines& lines) {
    lines = {};
    uint32_t address = 0;
    if (!ResolveHost(host, &address)) {
        FormatText(lines.status, L"%s: %S", L"Unknown host", host);
        return;
    }
    platform::EchoReply reply = {};
    const EchoResult result = SendEchoRequest(address, timeoutMs, reply);
    if (result == EchoResult::NoService) {
        FormatText(lines.status, L"Error: No ping service");
    } else if (result == EchoResult::NoReply) {
        FormatText(lines.status, L"Request timed out.");
    } else if (reply.address != address) {
        FormatText(lines.status, L"Destination host unreachable.");
    } else {
        DescribeAliveHost(address, reply.roundTripTime, lines);
    }
}
