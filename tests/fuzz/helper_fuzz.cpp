// What the Linux helper reads: clients' messages, leases, other programs' command lines, the kernel's wireless answers.

#include <sys/socket.h>

#include <algorithm>

#include "platform/linux/connection.h"
#include "platform/linux/dhclient_invocation.h"
#include "platform/linux/dhclient_leases.h"
#include "platform/linux/dhcp_clients.h"
#include "platform/linux/lease_reports.h"
#include "platform/linux/ndis_records.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/unit/helper/lease_texts.h"
#include "tests/unit/helper/netlink_builder.h"

namespace {

using namespace helper;
using namespace helper_protocol;

const Bytes kLease = RequestMessage({RequestKind::kLeaseState, "wlan0", 0, 0, {}});
const Bytes kQuery = RequestMessage({RequestKind::kRadioQuery, "wlan0", 0x0D010217, 1008, {}});

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
        const Bytes again = Encoded([&](auto space) { return EncodeRequest(space, header.sequence, request); });
        Demand(std::ranges::equal(again, input.first(kHeaderBytes + header.bodyBytes)));
    }
    uint32_t result = 0;
    Input rest;
    if (DecodeResult(body, result, rest)) {
        LeaseState state;
        DecodeLeaseAnswer(rest, state);
        std::string_view name, description;
        Demand(!DecodeBindingAnswer(rest, name, description) || name.size() + description.size() + 2 == rest.size());
    }
}

const Fuzzer kProtocol("helper_protocol", {"platform/helper_protocol.cpp"},
                       {kLease, kQuery, RequestMessage({RequestKind::kRadioSet, "wlan0", 0, 0, kAddress}),
                        Encoded([](auto space) {
                            return EncodeLeaseAnswer(space, {0, 4, 7}, {true, 1, 2, 3, 4, 5});
                        }),
                        Encoded([](auto space) {
                            return EncodeBindingAnswer(space, {0, 4, 7}, "wlan0", "iwlwifi");
                        }),
                        Encoded([](auto space) {
                            return EncodeResult(space, {0, 4, 7}, kResultBusy);
                        })},
                       FeedProtocol);

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

const Fuzzer kConnection("helper_connection", {"platform/linux/connection.cpp"},
                         {Bytes{7} + kLease + kQuery, Bytes{6} + Opening() + kLease}, FeedConnection);

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
    {Text("default-duid \"\\000\\001;}\\\"{\";\n" + Lease("eth0", "10.0.0.1") +
          Lease("eth1", "10.0.0.2", "expire epoch 1795246441; # Sat\n") + Lease("eth0", "10.0.0.3", "expire never;")),
     Text("lease { interface \"eth0\"; renew 6 2026/11/21 07:32:04; expire 6 2026/11/21 07:32:04; }\n"
          "lease { interface \"eth1\"; expire 4 1970/01/01 00:03:00; }\n"),
     Text(kDhcpcdReport), Text(kNetworkManagerReport), Text(kNetworkdLease), Text("ADDRESS=10.0.0.5\nLIFETIME=-1")},
    FeedLeases);

// A command line with a '|' for each zero of /proc, so that seeds can be read.
void FeedProcess(Input input) {
    std::vector<std::string> words;
    while (!input.empty()) {
        words.emplace_back(TextOf(Take(input, static_cast<size_t>(std::ranges::find(input, '|') - input.begin()))));
        Take(input, 1);
    }
    DhclientInvocation invocation, again;
    if (words.empty()) {
        return;  // a kernel thread, which the search leaves out
    }
    if (!ParseDhclientInvocation(words, invocation)) {
        // A lease file that a dhclient names is read, which is no work for a fuzzer.
        Demand(FindDhcpClients("eth0", {{.id = 1, .arguments = words}}).size() <= 1);
        return;
    }
    Demand(ParseDhclientInvocation(DhclientCommand(invocation, "-r"), again) && again.program == invocation.program);
    // A last option that lacks its value takes the added one for it.
    const bool isWhole = again.options == invocation.options;
    Demand(isWhole ? again.interfaces == invocation.interfaces : again.options.size() > invocation.options.size());
}

const Fuzzer kProcesses("helper_processes",
                        {"platform/linux/dhclient_invocation.cpp", "platform/linux/dhcp_clients.cpp"},
                        {Text("/sbin/dhclient|-4|-v|-pf|/run/x.pid|-lf|/x.leases|-sf|nm-dhcp|eth0"),
                         Text("dhclient|-6|-1|-lf"), Text("busybox|udhcpc|-b|-i|eth0"), Text("udhcpc|-ieth1"),
                         Text("dhcpcd: [privileged proxy] eth0 [ip4]||"), Text("/usr/sbin/NetworkManager|--no-daemon")},
                        FeedProcess);

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

const Fuzzer kNl80211("helper_nl80211",
                      {"platform/linux/nl80211_answers.cpp", "platform/linux/information_elements.cpp",
                       "platform/linux/ndis_records.cpp"},
                      {ScanMessage(kHome + Element(6, {10, 0}) + Element(221, kWpaPsk) + Bytes{1, 1}, 0x11, 2437,
                                   Number<uint8_t>(NL80211_BSS_SIGNAL_UNSPEC, 60)),
                       InterfaceMessage(), StationMessage()},
                      FeedNl80211);

}  // namespace
