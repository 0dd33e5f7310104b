// dhcpcd(8): -U prints the lease, -k releases it, -n rebinds, starting the client where none runs.

#include <unistd.h>

#include "platform/linux/command.h"
#include "platform/linux/dhcp_clients.h"
#include "platform/linux/lease_reports.h"
#include "platform/linux/lease_wait.h"

namespace helper {
namespace {

using helper_protocol::LeaseState;

// When the lease file was written; 0 when there is none. Version 9 and version 7 keep it in different places.
uint32_t LeaseFileTime(const std::string& name) {
    FileText file;
    for (const std::string& path :
         {"/var/lib/dhcpcd/" + name + ".lease", "/var/lib/dhcpcd5/dhcpcd-" + name + ".lease"}) {
        if (ReadSmallFile(path, file)) {
            return file.modified;
        }
    }
    return 0;
}

uint32_t Control(const char* option, const std::string& name, int timeoutMs) {
    if (geteuid() != 0) {
        return helper_protocol::kResultAccessDenied;
    }
    const CommandResult done = RunCommand({"dhcpcd", option, name}, timeoutMs);
    if (done.timedOut) {
        return helper_protocol::kResultTimeout;
    }
    return done.exitCode == 0 ? helper_protocol::kResultOk : helper_protocol::kResultGeneralFailure;
}

}  // namespace

bool ReadDhcpcdLease(const std::string& name, LeaseState& state) {
    const CommandResult report = RunCommand({"dhcpcd", "-4", "-U", name}, kReportBoundMs);
    return report.exitCode == 0 && ParseDhcpcdReport(report.output, LeaseFileTime(name), state);
}

uint32_t ReleaseWithDhcpcd(const std::string& name) {
    return Control("-k", name, kReleaseBoundMs);
}

uint32_t RenewWithDhcpcd(const std::string& name) {
    const long long start = NowMs();
    const uint32_t since = UnixTimeNow();
    const uint32_t result = Control("-n", name, kRenewBoundMs);
    if (result != helper_protocol::kResultOk) {
        return result;
    }
    const int left = kRenewBoundMs - static_cast<int>(NowMs() - start);
    return AwaitLease(name, since, left, [&](LeaseState& state) { return ReadDhcpcdLease(name, state); });
}

}  // namespace helper
