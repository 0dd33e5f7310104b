// Any bytes as the short texts that other programs and machines send.

#include <algorithm>
#include <string>

#include "adapters/public_ip.h"
#include "diagnostics/node_status.h"
#include "platform/desktop/arp_text.h"
#include "platform/desktop/proxy_list.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/support/node_status_reply.h"

namespace {

using namespace std::string_view_literals;

void FeedArpText(Input input) {
    const std::string text(TextOf(input));
    std::vector<MIB_IPNETROW> rows(text.size() / platform::kShortestArpLine + 1);
    const size_t count = platform::ParseArpText(text.c_str(), rows);
    Demand(count <= rows.size());
    for (size_t i = 1; i < count; ++i) {
        Demand(ntohl(rows[i - 1].dwAddr) < ntohl(rows[i].dwAddr));
    }
}

const Fuzzer kArpText("arp_text", {"platform/desktop/arp_text.cpp"}, FeedArpText,
                      {BytesOf("IP address       HW type     Flags       HW address            Mask     Device\n"
                               "192.168.7.2      0x1         0x2         02:00:00:00:00:02     *        eth0\n"
                               "192.168.7.1      0x1         0x0         00:00:00:00:00:00     *        eth0\n"
                               "10.0.0.1 0x1 0x6 fe:dc:ba:98:76:54 * eth1\n")});

void FeedProxyList(Input input) {
    const std::wstring list(input.begin(), input.end());
    wchar_t host[platform::kProxyHostUnits] = L"?";
    WORD port = 0;
    if (platform::FindHttpProxy(list.c_str(), host, &port)) {
        const size_t length = wcsnlen(host, platform::kProxyHostUnits);
        Demand(port != 0 && length != 0 && length < platform::kProxyHostUnits);
        Demand(list.find(host) != list.npos && wcspbrk(host, L"; \t=:") == nullptr);
    }
}

const Fuzzer kProxyList("proxy_list", {"platform/desktop/proxy_list.cpp"}, FeedProxyList,
                        {BytesOf("https=other:1;http=http://10.0.0.1:3128"), BytesOf(" bad:65536; good:1"),
                         BytesOf(std::string(platform::kProxyHostUnits, 'p') + ";q")});

void FeedPublicIp(Input input) {
    wchar_t address[kPublicIpUnits] = L"?";
    const bool found = ParseEchoBody({TextOf(input).data(), input.size()}, address);
    Demand(wcsnlen(address, kPublicIpUnits) <= kPublicIpCharacters);
    Demand(!found || wcsspn(address, L"0123456789.") == wcslen(address));
}

const Fuzzer kPublicIp("public_ip", {"adapters/public_ip.cpp"}, FeedPublicIp,
                       {BytesOf("203.0.113.7\r\n"), BytesOf("203.0.113.7\0<html>"sv), BytesOf("12345678901234567890")});

void FeedNodeStatus(Input input) {
    char name[kNodeNameBytes + 1];
    std::ranges::fill(name, '?');
    const bool taken = ParseNodeStatus(input, name);
    Demand(taken == (name[kNodeNameBytes] == 0));
}

const Fuzzer kNodeStatus("node_status", {"diagnostics/node_status.cpp"}, FeedNodeStatus,
                         {NodeStatusReply({"PRINTER"}), NodeStatusReply({"FIFTEEN LETTERS", ""}),
                          WithCount(Longer(NodeStatusReply({""}), 100), 3)});

}  // namespace
