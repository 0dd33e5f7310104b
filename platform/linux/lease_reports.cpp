// Lease reports made of lines with a name and a value.

#include "platform/linux/lease_reports.h"

#include "platform/linux/lease_text.h"

namespace helper {
namespace {

using helper_protocol::LeaseState;

struct Report {
    uint32_t address = 0;
    uint32_t seconds = 0;
    uint32_t expiry = 0;
    LeaseState state{.dhcp = true};
};

void ApplyPair(Report& report, std::string_view name, std::string_view value) {
    if (name == "ip_address" || name == "ADDRESS") {
        report.address = ParseAddress(value);
    } else if (name == "dhcp_server_identifier" || name == "SERVER_ADDRESS") {
        report.state.server = ParseAddress(value);
    } else if (name == "dhcp_lease_time" || name == "LIFETIME") {
        report.seconds = ParseNumber(value).value_or(0);
    } else if (name == "expiry") {
        report.expiry = ParseNumber(value).value_or(0);
    } else if (name == "netbios_name_servers") {
        const auto [primary, secondary] = ParseAddressPair(value);
        report.state.winsPrimary = primary;
        report.state.winsSecondary = secondary;
    }
}

std::string_view WithoutQuotes(std::string_view value) {
    const bool isQuoted = value.size() >= 2 && value.starts_with('\'') && value.ends_with('\'');
    return isQuoted ? value.substr(1, value.size() - 2) : value;
}

// Reads lines of `name = value` after the `skipTo` that begins each, if any.
Report ReadPairs(std::string_view text, std::string_view skipTo) {
    Report report;
    while (!text.empty()) {
        std::string_view line = TakeUntil(text, '\n');
        if (!skipTo.empty()) {
            const size_t at = line.find(skipTo);
            line = at == std::string_view::npos ? std::string_view() : line.substr(at + skipTo.size());
        }
        const auto name = Trim(TakeUntil(line, '='));
        ApplyPair(report, name, WithoutQuotes(Trim(line)));
    }
    return report;
}

bool UseAssignments(std::string_view text, uint32_t obtained, LeaseState& state) {
    const Report report = ReadPairs(text, "");
    if (report.address == 0) {
        return false;
    }
    state = report.state;
    state.obtained = obtained;
    state.expires = obtained != 0 && report.seconds != 0 ? LeaseEnd(obtained, report.seconds) : 0;
    return true;
}

}  // namespace

bool ParseDhcpcdReport(std::string_view text, uint32_t obtained, LeaseState& state) {
    return UseAssignments(text, obtained, state);
}

bool ParseNetworkdLease(std::string_view text, uint32_t obtained, LeaseState& state) {
    return UseAssignments(text, obtained, state);
}

bool ParseNetworkManagerReport(std::string_view text, LeaseState& state) {
    // None of the names and values that are read can hold an escaped colon.
    const Report report = ReadPairs(text, "]:");
    if (report.address == 0) {
        return false;
    }
    state = report.state;
    state.expires = report.expiry;
    state.obtained = report.seconds != 0 && report.seconds < report.expiry ? report.expiry - report.seconds : 0;
    return true;
}

}  // namespace helper
