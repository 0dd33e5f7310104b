// What the Linux helper reads: clients' messages, leases, other programs' command lines, the kernel's wireless answers.

#include <sys/socket.h>

#include "platform/linux/connection.h"
#include "platform/linux/dhclient_invocation.h"
#include "platform/linux/dhclient_leases.h"
#include "platform/linux/dhcp_clients.h"
#include "platform/linux/lease_reports.h"
#include "platform/linux/ndis_records.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/unit/helper/samples.h"

namespace {

using namespace helper;
using namespace helper_protocol;

// As a request, which encodes to the same bytes again, and as an answer.
void FeedMessage(const MessageHeader& header, const Bytes& body) {
    Request request;
    if (DecodeRequest(header.kind, body, request)) {
        Bytes again(kHeaderBytes + body.size());
        Demand(EncodeRequest(again, header.sequence, request) == again.size());
        Demand(std::ranges::equal(body, std::span(again).subspan(kHeaderBytes)));
    }
    uint32_t result = 0;
    Input rest;
    LeaseState state;
    std::string_view name, text;
    DecodeResult(body, result, rest);
    DecodeLeaseAnswer(rest, state);
    Demand(!DecodeBindingAnswer(rest, name, text) || name.size() + text.size() + 2 == rest.size());
}

// The first byte is the token's last digit: no fuzzer guesses the others. Without it nothing comes out.
void FeedConnection(Input input) {
    Bytes stream = Opening();
    stream.pop_back();
    stream = stream + Bytes(input.begin(), input.end());
    int ends[2];
    Demand(socketpair(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends) == 0);
    const ScopedDescriptor peer(ends[0]);
    Connection connection;
    connection.socket = ScopedDescriptor(ends[1]);
    Demand(send(peer.Get(), stream.data(), stream.size(), 0) == static_cast<ssize_t>(stream.size()));
    MessageHeader header;
    for (Input body; ReceiveBytes(connection, kToken) && HasMessage(connection, header, body);) {
        Demand(input[0] == kToken[kTokenDigits - 1] && body.size() == header.bodyBytes);
        FeedMessage(header, Bytes(body.begin(), body.end()));
        DropMessage(connection);
    }
}

// For a signal, and a scan; the answers tell a lease and a radio.
const Bytes kQuery = {14, 0, 0, 0, 1, 0, 5, 0, 2, 0, 0, 0, 6, 2, 1, 13, 4, 0, 0, 0, 5, 'w', 'l', 'a', 'n', '0'};
const Bytes kSet = {12, 0, 0, 0, 1, 0, 6, 0, 3, 0, 0, 0, 26, 1, 1, 13, 5, 'w', 'l', 'a', 'n', '0', 1, 2};
const Bytes kLease = Bytes{25, 0, 0, 0, 1, 0, 1, 0x80, 7, 0, 0, 0} + Bytes(25);
const Bytes kRadio = {12, 0, 0, 0, 1, 0, 4, 0x80, 7, 0, 0, 0, 0, 0, 0, 0, 2, 'w', '0', 4, 'i', 'w', 'l', 'd'};

void FeedLeases(Input input) {
    const std::string_view text = TextOf(input);
    LeaseState state;
    Demand(!ParseDhclientLeases(text, "eth0", state) || (state.dhcp && state.obtained <= state.expires));
    ListDhclientInterfaces(text);
    ParseDhcpcdReport(text, 1, state);
    ParseNetworkdLease(text, 1, state);
    Demand(!ParseNetworkManagerReport(text, state) || (state.dhcp && state.obtained <= state.expires));
}

// A command line with a '|' for each zero of /proc, so that seeds can be read.
void FeedProcess(Input input) {
    std::vector<std::string> words;
    do {  // a kernel thread, which has no words, is left out by the search
        words.emplace_back(TextOf(Take(input, static_cast<size_t>(std::ranges::find(input, '|') - input.begin()))));
        Take(input, 1);
    } while (!input.empty());
    DhclientInvocation invocation;
    const bool isDhclient = ParseDhclientInvocation(words, invocation);
    // A lease file that a dhclient names would be read, which is no work for a fuzzer.
    Demand(isDhclient ? ParseDhclientInvocation(DhclientCommand(invocation, "-r"), invocation)
                      : FindDhcpClients("eth0", {{.id = 1, .arguments = words}}).size() <= 1);
}

void FeedNl80211(Input input) {
    WirelessInterface interface;
    Demand(!ParseInterface(input, interface) || (interface.index != 0 && !interface.name.empty()));
    Station station;
    ParseStation(input, station);
    AccessPoint accessPoint;
    if (ParseAccessPoint(input, accessPoint)) {
        const NdisValue list = BssidListValue(std::span(&accessPoint, 1), 1008);
        Demand(list.size() == sizeof(uint32_t) + kBssidEntryBytes && accessPoint.ssid.size() <= kMaxSsidBytes);
    }
}

const bool kAdded = AddFuzzers({
    {"helper_connection", {Bytes{'f'} + kLeaseRequest + kQuery + kSet + kLease + kRadio}, FeedConnection},
    {"helper_lease",
     {BytesOf(Lease("eth0", "10.0.0.1") + Lease("eth1", "10.0.0.2", "expire epoch 1795246441; # Sat\n")),
      BytesOf(kDhcpcdReport), BytesOf(kNetworkManagerReport), BytesOf(kNetworkdLease)},
     FeedLeases},
    {"helper_processes",
     {BytesOf("dhclient|-lf|/x|-sf|nm-dhcp|eth0|-lf"), BytesOf("busybox|udhcpc|-i|eth0"),
      BytesOf("dhcpcd: [x y] eth0")},
     FeedProcess},
    {"helper_nl80211",
     {kScanMessage, kStationMessage, BytesOf({"\b\0\3\0\3\0\0\0\n\0\4\0wlan0\0\0\0\b\0\5\0\2\0\0\0", 28})},
     FeedNl80211},
});

}  // namespace
