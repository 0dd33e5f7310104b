// The kernel's list of neighbours, whole and damaged.
#include "platform/desktop/arp_text.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

const std::string kHeading = "IP address       HW type     Flags       HW address            Mask     Device\n";

std::string Neighbour(const std::string& address, const std::string& hardware, const char* flags = "0x2") {
    return address + "      0x1         " + flags + "         " + hardware + "     *        eth0\n";
}

// Address, first and last byte of the hardware address of every row.
std::string Parsed(const std::string& text, size_t room = 8) {
    std::array<MIB_IPNETROW, 8> rows;
    std::string found;
    const size_t count = platform::ParseArpText(text.c_str(), std::span(rows).first(room));
    for (const MIB_IPNETROW& row : std::span(rows).first(count)) {
        in_addr address = {};
        address.s_addr = row.dwAddr;
        found += std::string(inet_ntoa(address)) + "/" + std::to_string(row.bPhysAddr[0]) + "-" +
                 std::to_string(row.bPhysAddr[row.dwPhysAddrLen - 1]) + " ";
    }
    return found;
}

TEST(ArpText, Finished_neighbours_are_listed_once_in_the_order_of_their_addresses) {
    const std::string low = Neighbour("10.0.0.9", "02:00:00:00:00:09");
    const std::string high = Neighbour("10.0.0.10", "aa:bb:cc:dd:ee:ff");
    const std::tuple<const char*, std::string, const char*> rows[] = {
        {"no neighbour", kHeading, ""},
        {"two readings", kHeading + high + kHeading + low + high, "10.0.0.9/2-9 10.0.0.10/170-255 "},
        {"unfinished", kHeading + Neighbour("10.0.0.9", "00:00:00:00:00:00", "0x0") + high, "10.0.0.10/170-255 "},
        {"permanent", Neighbour("10.0.0.9", "02:00:00:00:00:09", "0x6"), "10.0.0.9/2-9 "},
        {"cut within the hardware address", kHeading + high + low.substr(0, 40), "10.0.0.10/170-255 "},
        {"no digits in the flags", Neighbour("10.0.0.9", "02:00:00:00:00:09", "0x*") + high, "10.0.0.10/170-255 "},
        {"no digits", Neighbour("10.0.0.9", "02:00:00:00:00:0g") + Neighbour("x.y.z.1", "02:00:00:00:00:09"), ""},
        {"too long an address", Neighbour("100.100.100.1000", "02:00:00:00:00:09"), ""},
        {"another kind of hardware", Neighbour("10.0.0.9", "02:00:00:00:00:09:0a:0b"), ""},
    };
    for (const auto& [what, text, neighbours] : rows) {
        EXPECT_EQ(Parsed(text), neighbours) << what;
    }
    EXPECT_EQ(Parsed(low + high, 1), "10.0.0.9/2-9 ");
}

}  // namespace
