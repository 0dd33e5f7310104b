// platform/linux/dhclient_invocation.h - a running dhclient's command line, taken apart so that it can be run again
// with the same files. Pure functions over words; dhclient(8) has the options.

#pragma once

#include <string>
#include <vector>

namespace helper {

struct DhclientInvocation {
    std::string program;
    std::vector<std::string> options;     // with their values; without those that choose what this one run does
    std::vector<std::string> interfaces;  // empty: every interface it finds
    std::string leaseFile;
    bool forIpv6 = false;
    bool forNetworkManager = false;  // its script reports to NetworkManager, which must be asked instead
};

// False when `arguments` is not a dhclient's command line.
bool ParseDhclientInvocation(const std::vector<std::string>& arguments, DhclientInvocation& invocation);

// The command line that runs `invocation` with one more option ("-x", "-r", "-nw").
std::vector<std::string> DhclientCommand(const DhclientInvocation& invocation, const std::string& option);

}  // namespace helper
