// dhclient's options, told apart by whether they take a value.

#include "platform/linux/dhclient_invocation.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace helper {
namespace {

constexpr const char* kDefaultLeaseFile = "/var/lib/dhcp/dhclient.leases";

constexpr std::array<std::string_view, 16> kWithValue = {
    "-p",
    "-s",
    "-g",
    "-D",
    "-e",
    "-lf",
    "-pf",
    "-cf",
    "-df",
    "-sf",
    "-4o6",
    "--dad-wait-time",
    "--prefix-len-hint",
    "--decline-wait-time",
    "--address-prefix-len",
    "--timeout",
};

// These say what one run does: a repetition chooses for itself, and must neither stay in the foreground (-d) nor give
// up for good after its first attempt (-1).
constexpr std::array<std::string_view, 10> kForOneRun = {"-r", "-x", "-1",  "-d", "-q",
                                                         "-v", "-w", "-nw", "-n", "--version"};

template <size_t n>
bool Contains(const std::array<std::string_view, n>& list, std::string_view word) {
    return std::find(list.begin(), list.end(), word) != list.end();
}

bool IsDhclient(const std::string& program) {
    return std::string_view(program).substr(program.rfind('/') + 1) == "dhclient";
}

void ApplyValue(DhclientInvocation& invocation, const std::string& option, const std::string& value) {
    if (option == "-lf") {
        invocation.leaseFile = value;
    } else if (option == "-sf") {
        invocation.forNetworkManager = value.find("nm-dhcp") != std::string::npos;
    }
}

}  // namespace

bool ParseDhclientInvocation(const std::vector<std::string>& arguments, DhclientInvocation& invocation) {
    if (arguments.empty() || !IsDhclient(arguments[0])) {
        return false;
    }
    DhclientInvocation read{.program = arguments[0], .options = {}, .interfaces = {}, .leaseFile = kDefaultLeaseFile};
    for (size_t i = 1; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (!word.starts_with('-')) {
            read.interfaces.push_back(word);
            continue;
        }
        read.forIpv6 = read.forIpv6 || word == "-6";
        if (Contains(kForOneRun, word)) {
            continue;
        }
        read.options.push_back(word);
        if (Contains(kWithValue, word) && i + 1 < arguments.size()) {
            read.options.push_back(arguments[++i]);
            ApplyValue(read, word, arguments[i]);
        }
    }
    invocation = std::move(read);
    return true;
}

std::vector<std::string> DhclientCommand(const DhclientInvocation& invocation, const std::string& option) {
    std::vector<std::string> command{invocation.program};
    command.insert(command.end(), invocation.options.begin(), invocation.options.end());
    command.push_back(option);
    command.insert(command.end(), invocation.interfaces.begin(), invocation.interfaces.end());
    return command;
}

}  // namespace helper
