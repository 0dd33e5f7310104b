// Any text as the kernel's list of neighbours.

#include "platform/desktop/arp_text.h"
#include "tests/fuzz/fuzzer.h"

#include <string>

namespace {

void ParseText(std::span<const uint8_t> input) {
    const std::string text(TextOf(input));
    std::vector<MIB_IPNETROW> rows(text.size() / platform::kShortestArpLine + 1);
    const size_t count = platform::ParseArpText(text.c_str(), rows);
    Demand(count <= rows.size());
    for (size_t i = 0; i < count; ++i) {
        Demand(rows[i].dwPhysAddrLen == 6 && rows[i].dwAddr != INADDR_NONE);
        Demand(i == 0 || ntohl(rows[i - 1].dwAddr) < ntohl(rows[i].dwAddr));
    }
}

std::vector<Bytes> Texts() {
    return {
        BytesOf("IP address       HW type     Flags       HW address            Mask     Device\n"
                "192.168.7.2      0x1         0x2         02:00:00:00:00:02     *        eth0\n"
                "192.168.7.1      0x1         0x0         00:00:00:00:00:00     *        eth0\n"
                "10.0.0.1 0x1 0x6 fe:dc:ba:98:76:54 * eth1\n")};
}

const RegisteredFuzzer kFuzzer({"arp_text", {"platform/desktop/arp_text.cpp"}, ParseText, Texts});

}  // namespace
