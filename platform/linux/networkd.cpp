// systemd-networkd: state from its lease files, renewal through networkctl(1). networkctl knows no release.

#include <unistd.h>

#include "platform/linux/command.h"
#include "platform/linux/dhcp_clients.h"
#include "platform/linux/lease_reports.h"
#include "platform/linux/lease_wait.h"

namespace helper {

using helper_protocol::LeaseState;

bool ReadNetworkdLease(const std::string& name, LeaseState& state) {
    const uint32_t index = InterfaceIndex(name);
    FileText lease;
    return index != 0 && ReadSmallFile("/run/systemd/netif/leases/" + std::to_string(index), lease) &&
           ParseNetworkdLease(lease.text, lease.modified, state);
}

uint32_t RenewWithNetworkd(const std::string& name) {
    const long long start = NowMs();
    const uint32_t since = UnixTimeNow();
    const CommandResult asked = RunCommand({"networkctl", "renew", name}, kRenewBoundMs);
    if (asked.timedOut) {
        return helper_protocol::kResultTimeout;
    }
    if (asked.exitCode != 0) {
        return geteuid() != 0 ? helper_protocol::kResultAccessDenied : helper_protocol::kResultGeneralFailure;
    }
    const int left = kRenewBoundMs - static_cast<int>(NowMs() - start);
    return AwaitLease(name, since, left, [&](LeaseState& state) { return ReadNetworkdLease(name, state); });
}

}  // namespace helper
