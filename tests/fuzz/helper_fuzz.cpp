// What the Linux helper reads: clients' messages, leases, other programs' command lines, the kernel's wireless answers.

#include <linux/nl80211.h>
#include <sys/socket.h>

#include <algorithm>
#include <string>

#include "platform/helper_protocol.h"
#include "platform/linux/connection.h"
#include "platform/linux/dhclient_invocation.h"
#include "platform/linux/dhclient_leases.h"
#include "platform/linux/dhcp_clients.h"
#include "platform/linux/lease_reports.h"
#include "platform/linux/ndis_records.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/unit/helper/netlink_builder.h"

namespace {

using namespace helper;
using namespace helper_protocol;
using namespace std::string_view_literals;

constexpr std::string_view kToken = "0123456789abcdef0123456789ABCDEF";

template <typename Encode>
Bytes Message(Encode encode) {
    Bytes message(128);
    message.resize(encode(std::span<uint8_t>(message)));
    return message;
}

Bytes RequestMessage(const Request& request) {
    return Message([&](auto space) { return EncodeRequest(space, 1, request); });
}

Bytes Opening() {
    return Message([](auto space) {
        EncodeOpening(space.first(kOpeningBytes), kToken);
        return kOpeningBytes;
    });
}

const Request kLease{RequestKind::kLeaseState, "wlan0", 0, 0, {}};
const Request kQuery{RequestKind::kRadioQuery, "wlan0", 0x0D010217, 1008, {}};

// Whatever decodes as a request encodes to the same bytes again.
void FeedProtocol(Input input) {
    IsOpening(input, kToken);
    MessageHeader header;
    if (!DecodeHeader(input, header) || input.size() - kHeaderBytes < header.bodyBytes) {
        return;
    }
    const Input body = input.subspan(kHeaderBytes, header.bodyBytes);
    Request request;
    if (DecodeRequest(header.kind, body, request)) {
        Bytes again(kMaxMessageBytes);
        again.resize(EncodeRequest(again, header.sequence, request));
        Demand(std::ranges::equal(again, input.first(kHeaderBytes + header.bodyBytes)));
    }
    uint32_t result = 0;
    Input rest;
    if (DecodeResult(body, result, rest)) {
        LeaseState state;
        DecodeLeaseAnswer(rest, state);
        std::string_view name;
        std::string_view description;
        Demand(!DecodeBindingAnswer(rest, name, description) || name.size() + description.size() + 2 == rest.size());
    }
}

constexpr MessageHeader kAnswer{0, 4, 7};
constexpr uint8_t kValue[] = {1, 2, 3, 4};
const Fuzzer kProtocol("helper_protocol", {"platform/helper_protocol.cpp"}, FeedProtocol,
                       {RequestMessage(kLease), RequestMessage(kQuery),
                        RequestMessage({RequestKind::kRadioSet, "wlan0", 0, 0, kValue}), Message([](auto space) {
                            return EncodeLeaseAnswer(space, kAnswer, {true, 1, 2, 3, 4, 5});
                        }),
                        Message([](auto space) { return EncodeBindingAnswer(space, kAnswer, "wlan0", "iwlwifi"); }),
                        Message([](auto space) { return EncodeResult(space, kAnswer, kResultBusy); })});

// All message bodies, each behind its header's kind; the connection ends at the first byte that is not the protocol's.
std::vector<Bytes> Receive(Input stream, size_t blockBytes) {
    int ends[2];
    Demand(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends) == 0);
    const ScopedDescriptor peer(ends[0]);
    Connection connection;
    connection.socket = ScopedDescriptor(ends[1]);
    std::vector<Bytes> messages;
    bool isOpen = true;
    while (isOpen && !stream.empty()) {
        const Input block = Take(stream, blockBytes);
        Demand(send(peer.Get(), block.data(), block.size(), 0) == static_cast<ssize_t>(block.size()));
        MessageHeader header;
        Input body;
        while ((isOpen = ReceiveBytes(connection, kToken)) && HasMessage(connection, header, body)) {
            Demand(connection.isTrusted && body.size() == header.bodyBytes);
            messages.emplace_back(body.begin(), body.end()).push_back(static_cast<uint8_t>(header.kind));
            DropMessage(connection);
        }
        Demand(connection.input.size() <= kMaxMessageBytes);
    }
    return messages;
}

// The messages do not depend on how the bytes arrive, and none comes out before the token. The first byte tells how
// long the blocks are, and whether the right opening goes ahead: no fuzzer guesses a token.
void FeedConnection(Input input) {
    if (!input.empty()) {
        const Bytes stream = ((input[0] & 1) != 0 ? Opening() : Bytes()) + Bytes(input.begin() + 1, input.end());
        Demand(Receive(stream, 1u + input[0]) == Receive(stream, 64 * 1024));
    }
}

const Fuzzer kConnection("helper_connection", {"platform/linux/connection.cpp"}, FeedConnection,
                         {Bytes{7} + RequestMessage(kLease) + RequestMessage(kQuery),
                          Bytes{6} + Opening() + RequestMessage(kLease)});

void FeedLeases(Input input) {
    const std::string_view text = TextOf(input);
    LeaseState state;
    Demand(!ParseDhclientLeases(text, "eth0", state) || (state.dhcp && state.obtained <= state.expires));
    const std::vector<std::string> names = ListDhclientInterfaces(text);
    for (const std::string& name : names) {
        Demand(std::ranges::count(names, name) == 1 && ParseDhclientLeases(text, name, state));
    }
    for (const auto parse : {ParseDhcpcdReport, ParseNetworkdLease}) {
        Demand(!parse(text, 1, state) || (state.dhcp && state.obtained == 1));
    }
    Demand(!ParseNetworkManagerReport(text, state) || (state.dhcp && state.obtained <= state.expires));
}

const Fuzzer kLeases(
    "helper_lease",
    {"platform/linux/dhclient_leases.cpp", "platform/linux/lease_reports.cpp", "platform/linux/lease_text.cpp"},
    FeedLeases,
    {BytesOf("default-duid \"\\000\\001;}\\\"{\";\nlease {\n  interface \"eth0\";\n  fixed-address 10.77.0.60;\n"
             "  option dhcp-lease-time 120;\n  option dhcp-server-identifier 10.77.0.1;\n"
             "  option netbios-name-servers 10.77.0.1,10.77.0.9;\n  renew 6 2026/11/21 07:32:53;\n"
             "  expire epoch 1795246441; # Sat Nov 21 07:34:01 2026\n}\nlease {\n  interface \"eth0\";\n"
             "  option dhcp-server-identifier 10.77.0.2;\n  expire never;\n"),
     BytesOf("lease { interface \"eth0\"; renew 6 2026/11/21 07:32:04; expire 6 2026/11/21 07:32:04; }\n"
             "lease { interface \"eth1\"; expire 4 1970/01/01 00:03:00; }\n"),
     BytesOf("reason=BOUND\nip_address='10.0.0.5'\ndhcp_server_identifier='10.0.0.1'\ndhcp_lease_time='3600'\n"
             "netbios_name_servers='10.0.0.7 10.0.0.8'\n"),
     BytesOf("# private\nADDRESS=10.0.0.5\nSERVER_ADDRESS=10.0.0.1\nLIFETIME=4294967295\n"),
     BytesOf("DHCP4.OPTION[1]:dhcp_lease_time = 3600\nDHCP4.OPTION[3]:expiry = 4600\n"
             "DHCP4.OPTION[4]:ip_address = 10.0.0.5\nDHCP4.OPTION[5]:dhcp_client_identifier = 01\\:02\n")});

// A command line as /proc gives it.
void FeedProcess(Input input) {
    std::vector<std::string> words;
    while (!input.empty()) {
        words.emplace_back(TextOf(Take(input, static_cast<size_t>(std::ranges::find(input, 0) - input.begin()))));
        Take(input, 1);
    }
    DhclientInvocation invocation;
    if (words.empty()) {
        return;  // a kernel thread, which the search leaves out
    }
    if (!ParseDhclientInvocation(words, invocation)) {
        // A lease file that a dhclient names is read, which is no work for a fuzzer.
        Demand(FindDhcpClients("eth0", {{.id = 1, .arguments = words}}).size() <= 1);
        return;
    }
    DhclientInvocation again;
    Demand(ParseDhclientInvocation(DhclientCommand(invocation, "-r"), again) && again.program == invocation.program);
    // A last option that lacks its value takes the added one for it.
    const bool isWhole = again.options == invocation.options;
    Demand(isWhole ? again.interfaces == invocation.interfaces : again.options.size() > invocation.options.size());
}

const Fuzzer kProcesses("helper_processes",
                        {"platform/linux/dhclient_invocation.cpp", "platform/linux/dhcp_clients.cpp"}, FeedProcess,
                        {BytesOf("/sbin/dhclient\0-4\0-v\0-pf\0/run/x.pid\0-lf\0/x.leases\0-sf\0nm-dhcp\0eth0"sv),
                         BytesOf("dhclient\0-6\0-1\0-lf"sv), BytesOf("busybox\0udhcpc\0-b\0-i\0eth0"sv),
                         BytesOf("udhcpc\0-ieth1"sv), BytesOf("dhcpcd: [privileged proxy] eth0 [ip4]\0\0"sv),
                         BytesOf("/usr/sbin/NetworkManager\0--no-daemon"sv)});

void FeedNl80211(Input input) {
    WirelessInterface interface;
    Demand(!ParseInterface(input, interface) || (interface.index != 0 && !interface.name.empty()));
    Station station;
    ParseStation(input, station);
    AccessPoint accessPoint;
    if (ParseAccessPoint(input, accessPoint)) {
        WepStatus(accessPoint);
        AuthenticationMode(accessPoint.security);
        const NdisValue list = BssidListValue(std::span(&accessPoint, 1), 1008);
        Demand(list.size() == sizeof(uint32_t) + kBssidEntryBytes && accessPoint.ssid.size() <= kMaxSsidBytes);
        ConfigurationValue(accessPoint);
    }
}

const Bytes kElements =
    Element(0, Text("home")) + Element(1, {0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24}) + Element(6, {10, 0}) +
    Element(48, {1, 0, 0, 0x0F, 0xAC, 4, 1, 0, 0, 0x0F, 0xAC, 4, 1, 0, 0, 0x0F, 0xAC, 2, 0, 0}) +
    Element(50, {0x30, 0xFF}) +
    Element(221, {0, 0x50, 0xF2, 1, 1, 0, 0, 0x50, 0xF2, 2, 1, 0, 0, 0x50, 0xF2, 2, 1, 0, 0, 0x50, 0xF2, 1}) +
    Bytes{1, 1};  // the last one is cut
const Bytes kBss = Attribute(NL80211_BSS_BSSID, {2, 0, 0, 0, 0, 1}) + Number<uint32_t>(NL80211_BSS_FREQUENCY, 2437) +
                   Number<uint16_t>(NL80211_BSS_BEACON_INTERVAL, 100) + Number<uint16_t>(NL80211_BSS_CAPABILITY, 0x11) +
                   Number<int32_t>(NL80211_BSS_SIGNAL_MBM, -6650) + Number<uint8_t>(NL80211_BSS_SIGNAL_UNSPEC, 60) +
                   Number<uint32_t>(NL80211_BSS_STATUS, NL80211_BSS_STATUS_ASSOCIATED) +
                   Attribute(NL80211_BSS_BEACON_IES, Element(0, {0, 0, 0})) +
                   Attribute(NL80211_BSS_INFORMATION_ELEMENTS, kElements);
const Fuzzer kNl80211("helper_nl80211",
                      {"platform/linux/nl80211_answers.cpp", "platform/linux/information_elements.cpp",
                       "platform/linux/ndis_records.cpp"},
                      FeedNl80211,
                      {Number<uint32_t>(NL80211_ATTR_IFINDEX, 3) + Attribute(NL80211_ATTR_BSS, kBss),
                       Number<uint32_t>(NL80211_ATTR_IFINDEX, 3) + Attribute(NL80211_ATTR_IFNAME, Text("wlan0")) +
                           Number<uint32_t>(NL80211_ATTR_IFTYPE, NL80211_IFTYPE_STATION),
                       Attribute(NL80211_ATTR_MAC, {2, 0, 0, 0, 0, 1}) +
                           Attribute(NL80211_ATTR_STA_INFO, Number<uint8_t>(NL80211_STA_INFO_SIGNAL, 0xC8))});

}  // namespace
