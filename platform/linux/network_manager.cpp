// NetworkManager through nmcli(1). It has no release and renewal by name: a device that is disconnected gives its lease
// back, one that is connected, or connected again, gets a lease.

#include <unistd.h>

#include "platform/linux/command.h"
#include "platform/linux/dhcp_clients.h"
#include "platform/linux/lease_reports.h"

namespace helper {
namespace {

// nmcli(1), EXIT STATUS.
constexpr int kNmcliTimeout = 3;
constexpr int kNmcliNoSuchObject = 10;

uint32_t ResultOf(const CommandResult& done) {
    if (done.exitCode == 0) {
        return helper_protocol::kResultOk;
    }
    if (done.timedOut || done.exitCode == kNmcliTimeout) {
        return helper_protocol::kResultTimeout;
    }
    const bool isRefusal = geteuid() != 0 && done.started && done.exitCode != kNmcliNoSuchObject;
    return isRefusal ? helper_protocol::kResultAccessDenied : helper_protocol::kResultGeneralFailure;
}

}  // namespace

bool ReadNetworkManagerLease(const std::string& name, helper_protocol::LeaseState& state) {
    const CommandResult report = RunCommand({"nmcli", "-t", "-f", "DHCP4", "device", "show", name}, kReportBoundMs);
    return report.exitCode == 0 && ParseNetworkManagerReport(report.output, state);
}

uint32_t ReleaseWithNetworkManager(const std::string& name) {
    return ResultOf(RunCommand({"nmcli", "--wait", "8", "device", "disconnect", name}, kReleaseBoundMs));
}

uint32_t RenewWithNetworkManager(const std::string& name) {
    return ResultOf(RunCommand({"nmcli", "--wait", "18", "device", "connect", name}, kRenewBoundMs));
}

}  // namespace helper
