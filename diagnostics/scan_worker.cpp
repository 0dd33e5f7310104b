// Probes one host and records what it learned. Everything after the echo only adds to a host that has answered.

#include "diagnostics/scan_worker.h"

#include "diagnostics/arp_lookup.h"
#include "diagnostics/echo_request.h"
#include "diagnostics/node_status.h"
#include "platform/atomics.h"

namespace {

bool AnswersEcho(uint32_t address) {
    platform::EchoReply reply = {};
    return address != INADDR_NONE && SendEchoRequest(address, kEchoTimeoutMs, reply) == EchoResult::Replied &&
           reply.address == address;
}

void LearnHardwareAddress(HostRecord& host) {
    MIB_IPNETROW row = {};
    if (FindArpRow(host.address, row)) {
        memcpy(host.mac.bytes, row.bPhysAddr, sizeof(host.mac.bytes));
        host.macKnown = 1;
    }
}

void LearnName(HostRecord& host) {
    sockaddr_in target = {};
    target.sin_family = AF_INET;
    target.sin_port = htons(kNodeStatusPort);
    target.sin_addr.s_addr = host.address;
    AskNodeName(target, std::span(host.name).first<kNodeNameBytes + 1>());
}

void ProbeHost(const ScanWorkerParams& params) {
    const uint32_t address = htonl(params.hostAddress);
    const bool answered = AnswersEcho(address);
    if (platform::AtomicLoad(&scanState.stopRequested) != 0) {
        return;
    }
    HostRecord& host = params.table->hosts[params.index];
    if (answered) {
        host.address = address;
        host.macKnown = 0;
        LearnHardwareAddress(host);
        LearnName(host);
    }
    platform::AtomicExchange(&host.status, answered ? kHostAnswered : kHostSilent);
}

}  // namespace

void ScanHost(void* argument) {
    constexpr WORD kWinsockVersion = 0x0102;
    auto* params = static_cast<ScanWorkerParams*>(argument);
    WSADATA winsock;
    WSAStartup(kWinsockVersion, &winsock);
    ProbeHost(*params);
    WSACleanup();
    ReleaseTable(params->table);
    LocalFree(params);
}
