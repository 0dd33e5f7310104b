// dhcpcd(8): -U prints the lease, -k releases it, -n rebinds, starting the client where none runs.

#include <unistd.h>

#include <algorithm>
#include <filesystem>

#include "platform/linux/command.h"
#include "platform/linux/dhcp_clients.h"
#include "platform/linux/lease_reports.h"
#include "platform/linux/lease_text.h"
#include "platform/linux/lease_wait.h"

namespace helper {
namespace {

using helper_protocol::LeaseState;

// "eth0.lease", or for a wireless interface "wlan0-network.lease".
bool IsLeaseFile(std::string_view file, std::string_view name) {
    constexpr std::string_view kEnding = ".lease";
    if (!file.starts_with(name) || !file.ends_with(kEnding) || file.size() < name.size() + kEnding.size()) {
        return false;
    }
    return file.size() == name.size() + kEnding.size() || file[name.size()] == '-';
}

// When the newest lease file was written; 0 when there is none. Version 9 and version 7 keep them in different places.
uint32_t LeaseFileTime(const std::string& name) {
    uint32_t newest = 0;
    for (const auto& [folder, start] : {std::pair("/var/lib/dhcpcd", ""), std::pair("/var/lib/dhcpcd5", "dhcpcd-")}) {
        std::error_code failed;
        for (std::filesystem::directory_iterator entry(folder, failed), end; entry != end; entry.increment(failed)) {
            FileText file;
            if (IsLeaseFile(entry->path().filename().string(), start + name) && ReadSmallFile(entry->path(), file)) {
                newest = std::max(newest, file.modified);
            }
        }
    }
    return newest;
}

// The title without what is the same in all: "eth0 [ip4]", "[manager] [ip4]", or nothing.
std::string_view TitleOf(const std::vector<std::string>& arguments) {
    std::string_view title = arguments[0];
    for (const std::string_view start : {"dhcpcd:", "[privileged proxy]"}) {
        title = Trim(title);
        if (title.starts_with(start)) {
            title.remove_prefix(start.size());
        }
    }
    return Trim(title);
}

// One that runs for an interface and IPv4 alone is another to dhcpcd than one for both, and must be addressed as such;
// told wrongly, -n would start a second one.
bool IsForIpv4Alone(const Process& process) {
    const std::string_view title = TitleOf(process.arguments);
    return !title.starts_with('[') && title.ends_with("[ip4]");
}

uint32_t Control(const DhcpClient& client, const char* option, const std::string& name, int timeoutMs) {
    if (geteuid() != 0) {
        return helper_protocol::kResultAccessDenied;
    }
    std::vector<std::string> command{"dhcpcd", option, name};
    if (IsForIpv4Alone(client.process)) {
        command.insert(command.begin() + 1, "-4");
    }
    const CommandResult done = RunCommand(command, timeoutMs);
    if (done.timedOut) {
        return helper_protocol::kResultTimeout;
    }
    return done.exitCode == 0 ? helper_protocol::kResultOk : helper_protocol::kResultGeneralFailure;
}

}  // namespace

bool IsDhcpcdFor(const std::vector<std::string>& arguments, const std::string& name) {
    const std::string_view title = TitleOf(arguments);
    const bool isProgram = BaseName(arguments[0]) == "dhcpcd";
    const bool isTitle = arguments[0].starts_with("dhcpcd:");
    return isProgram || (isTitle && (title.empty() || title.starts_with(name + " ") || title.starts_with("[manager]") ||
                                     title.starts_with("[master]")));
}

bool ReadDhcpcdLease(const std::string& name, LeaseState& state) {
    const CommandResult report = RunCommand({"dhcpcd", "-4", "-U", name}, kReportBoundMs);
    return report.exitCode == 0 && ParseDhcpcdReport(report.output, LeaseFileTime(name), state);
}

uint32_t ReleaseWithDhcpcd(const DhcpClient& client, const std::string& name) {
    return Control(client, "-k", name, kReleaseBoundMs);
}

uint32_t RenewWithDhcpcd(const DhcpClient& client, const std::string& name) {
    const long long start = NowMs();
    const uint32_t since = UnixTimeNow();
    const uint32_t result = Control(client, "-n", name, kRenewBoundMs);
    if (result != helper_protocol::kResultOk) {
        return result;
    }
    const int left = kRenewBoundMs - static_cast<int>(NowMs() - start);
    // The file's time tells as much as a report, ten times a second; and a version 9 that runs all interfaces was seen
    // to accept no further report after -n.
    return AwaitLease(name, since, left, [&](LeaseState& state) {
        state.obtained = LeaseFileTime(name);
        return state.obtained != 0;
    });
}

}  // namespace helper
