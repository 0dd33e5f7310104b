// dhclient: state from its lease file; release and renewal by running it again with the same files.

#include <unistd.h>

#include <algorithm>
#include <csignal>

#include "platform/linux/command.h"
#include "platform/linux/dhclient_invocation.h"
#include "platform/linux/dhclient_leases.h"
#include "platform/linux/dhcp_clients.h"
#include "platform/linux/lease_wait.h"

namespace helper {
namespace {

using helper_protocol::LeaseState;

uint32_t EndDhclient(const DhcpClient& client, const DhclientInvocation& invocation, const char* option) {
    const CommandResult ended = RunCommand(DhclientCommand(invocation, option), kReleaseBoundMs);
    if (ended.timedOut) {
        return helper_protocol::kResultTimeout;
    }
    if (ended.exitCode != 0) {
        return helper_protocol::kResultGeneralFailure;
    }
    // It finds the running one by the process id file; one that keeps none must be told by itself.
    if (IsRunning(client.process)) {
        kill(client.process.id, SIGTERM);
    }
    return helper_protocol::kResultOk;
}

// How many interfaces lose their client when this dhclient ends.
size_t CountServed(const DhclientInvocation& invocation) {
    FileText leases;
    if (!invocation.interfaces.empty() || !ReadSmallFile(invocation.leaseFile, leases)) {
        return invocation.interfaces.size();
    }
    return ListDhclientInterfaces(leases.text).size();
}

}  // namespace

bool ServesInterface(const std::vector<std::string>& dhclientArguments, const std::string& name) {
    DhclientInvocation invocation;
    if (!ParseDhclientInvocation(dhclientArguments, invocation) || invocation.forIpv6 || invocation.forNetworkManager) {
        return false;
    }
    if (!invocation.interfaces.empty()) {
        return std::count(invocation.interfaces.begin(), invocation.interfaces.end(), name) != 0;
    }
    FileText leases;
    LeaseState state;
    return ReadSmallFile(invocation.leaseFile, leases) && ParseDhclientLeases(leases.text, name, state);
}

bool ReadDhclientLease(const DhcpClient& client, const std::string& name, LeaseState& state) {
    DhclientInvocation invocation;
    FileText leases;
    if (!ParseDhclientInvocation(client.process.arguments, invocation) ||
        !ReadSmallFile(invocation.leaseFile, leases) || !ParseDhclientLeases(leases.text, name, state)) {
        return false;
    }
    // A lease without a length, or one without end, was obtained when it was written.
    if (state.obtained == 0 && state.expires != 0) {
        state.obtained = leases.modified;
    }
    return true;
}

uint32_t ReleaseWithDhclient(const DhcpClient& client, const std::string&) {
    DhclientInvocation invocation;
    if (geteuid() != 0) {
        return helper_protocol::kResultAccessDenied;
    }
    // Released for one interface, a dhclient of several leaves the others without a client.
    if (!ParseDhclientInvocation(client.process.arguments, invocation) || CountServed(invocation) > 1) {
        return helper_protocol::kResultNotSupported;
    }
    return EndDhclient(client, invocation, "-r");
}

uint32_t RenewWithDhclient(const DhcpClient& client, const std::string& name) {
    DhclientInvocation invocation;
    if (geteuid() != 0) {
        return helper_protocol::kResultAccessDenied;
    }
    if (!ParseDhclientInvocation(client.process.arguments, invocation)) {
        return helper_protocol::kResultNotSupported;
    }
    // While one runs a second refuses to start, so the first is ended without giving the lease back (-x), which takes
    // the address off the interface. The second starts in the background (-nw), so that it goes on trying after the
    // bound, and asks the server for the address of its lease file.
    const long long start = NowMs();
    const uint32_t since = UnixTimeNow();
    EndDhclient(client, invocation, "-x");
    const CommandResult started = RunCommand(DhclientCommand(invocation, "-nw"), kReleaseBoundMs);
    if (started.exitCode != 0) {
        return helper_protocol::kResultGeneralFailure;
    }
    const int left = kRenewBoundMs - static_cast<int>(NowMs() - start);
    return AwaitLease(name, since, left, [&](LeaseState& state) { return ReadDhclientLease(client, name, state); });
}

}  // namespace helper
