// Replies of NetBIOS peers, and both lists byte for byte.
#include <gtest/gtest.h>

#include "diagnostics/node_status.h"
#include "diagnostics/safe_list.h"
#include "tests/support/host_records.h"
#include "tests/support/node_status_reply.h"
#include "tests/support/texts.h"

namespace {

TEST(NodeStatus, Takes_the_first_name_of_a_reply_that_is_long_enough) {
    const auto nameIn = [](const Bytes& reply) {
        char name[kNodeNameBytes + 1] = "none";
        ParseNodeStatus(reply, name);
        return std::wstring(name, name + strlen(name));
    };
    const Bytes one = NodeStatusReply({"PRINTER"}), three = NodeStatusReply({"FIRST", "SECOND", "THIRD"});
    const auto cut = [](const Bytes& reply) { return Bytes(reply.begin(), reply.end() - 1); };
    const auto counting = [&](uint8_t names) { return WithCount(Longer(one, 1024), names); };
    EXPECT_EQ(Each(nameIn, {one, cut(one), three, cut(three), counting(0), counting(53), counting(54)}),
              L"PRINTER|none|FIRST|none|PRINTER|PRINTER|none");
    EXPECT_EQ(Each(nameIn, {NodeStatusReply({""}), NodeStatusReply({" A"}), NodeStatusReply({"A \"b\", 15 BYTES"})}),
              L" | A|A \"b\", 15 BYTES");
}

using Hosts = std::vector<std::wstring>;

TEST(HostList, Hosts_are_kept_once_in_the_order_in_which_they_were_added) {
    const Hosts hosts = {L"example.com", L"10.0.0.1", L"example.co", std::wstring(99, L'x'), L"caf\x00E9"};
    Bytes expected;
    for (const std::wstring& host : hosts) {
        EXPECT_TRUE(AddHost(nullptr, host.c_str()));
        expected = expected + HostRecordOf(host);
    }
    EXPECT_FALSE(AddHost(nullptr, L"Example.COM") || AddHost(nullptr, hosts[3].c_str()));
    EXPECT_EQ(ReadWholeFile(L"hosts.dat"), expected);
    EXPECT_EQ(ListedHosts(), hosts);
}

TEST(HostList, Damaged_files_are_read_without_running_over_a_record) {
    Bytes filled = HostRecordOf(L"host");  // what follows the terminator means nothing
    std::fill(filled.begin() + 10, filled.end(), uint8_t{'z'});
    const Bytes cut = {'n', 0, 'e', 0, 'w', 0};  // over the record read before it
    const Bytes damaged = filled + Bytes(200, uint8_t{'A'}) + HostRecordOf(L"second") + cut;
    WriteWholeFile(L"hosts.dat", damaged);
    EXPECT_EQ(ListedHosts(), (Hosts{L"host", std::wstring(100, L'\x4141'), L"second", L"newond"}));
    EXPECT_TRUE(!AddHost(nullptr, L"HOST") && AddHost(nullptr, L"third"));
    EXPECT_EQ(ReadWholeFile(L"hosts.dat"), damaged + HostRecordOf(L"third"));
}

TEST(SafeList, Entries_stay_in_their_order_until_all_equal_ones_are_removed) {
    const Bytes a = {0, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}, b(6, uint8_t{0xFF}), zero(6), cut = {0, 0x1A};
    const auto macOf = [](const Bytes& bytes) {
        MacAddress mac = {};
        std::ranges::copy(bytes, mac.bytes);
        return mac;
    };
    for (const Bytes& mac : {a, b, zero, a}) {
        EXPECT_TRUE(SafeListAdd(macOf(mac)));
    }
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), a + b + zero + a);
    EXPECT_TRUE(!SafeListRemove(nullptr, {{1, 2, 3, 4, 5, 6}}) && SafeListRemove(nullptr, macOf(a)));
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), b + zero);
    // A cut tail is completed from the entry before it.
    const Bytes completed = cut + Bytes(4, uint8_t{0xFF});
    WriteWholeFile(L"slist.dat", b + cut);
    EXPECT_TRUE(SafeListContains(macOf(completed)) && SafeListRemove(nullptr, macOf(b)));
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), completed);
}

}  // namespace
