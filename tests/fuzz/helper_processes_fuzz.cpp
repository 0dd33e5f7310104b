// Other programs' command lines, as /proc gives them, in the search for an interface's DHCP client.

#include <algorithm>
#include <string>

#include "platform/linux/dhclient_invocation.h"
#include "platform/linux/dhcp_clients.h"
#include "tests/fuzz/fuzzer.h"

namespace {

using namespace helper;

std::vector<std::string> WordsOf(std::string_view text) {
    std::vector<std::string> words;
    while (!text.empty()) {
        const size_t end = std::min(text.find('\0'), text.size());
        words.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

void TakeApart(std::span<const uint8_t> input) {
    const std::vector<std::string> words = WordsOf(TextOf(input));
    if (words.empty()) {
        return;  // a kernel thread, which the search leaves out
    }
    DhclientInvocation invocation;
    if (!ParseDhclientInvocation(words, invocation)) {
        // A lease file that a dhclient names is read, which is no work for a fuzzer.
        Demand(FindDhcpClients("eth0", {{.id = 1, .arguments = words}}).size() <= 1);
        return;
    }
    DhclientInvocation again;
    Demand(ParseDhclientInvocation(DhclientCommand(invocation, "-r"), again));
    // A last option that lacks its value takes the added one for it.
    const bool isWhole = again.options == invocation.options;
    Demand(isWhole ? again.interfaces == invocation.interfaces : again.options.size() > invocation.options.size());
    Demand(again.program == invocation.program && again.options.size() + again.interfaces.size() <= words.size());
}

std::vector<Bytes> CommandLines() {
    using namespace std::string_view_literals;
    return {BytesOf("/sbin/dhclient\0-4\0-v\0-pf\0/run/x.pid\0-lf\0/x.leases\0-sf\0nm-dhcp\0eth0"sv),
            BytesOf("dhclient\0-6\0-1\0-lf"sv),
            BytesOf("busybox\0udhcpc\0-b\0-i\0eth0"sv),
            BytesOf("udhcpc\0-ieth1"sv),
            BytesOf("dhcpcd: [privileged proxy] eth0 [ip4]\0\0"sv),
            BytesOf("/usr/sbin/NetworkManager\0--no-daemon"sv)};
}

const RegisteredFuzzer kFuzzer({"helper_processes",
                                {"platform/linux/dhclient_invocation.cpp", "platform/linux/dhcp_clients.cpp"},
                                TakeApart,
                                CommandLines});

}  // namespace
