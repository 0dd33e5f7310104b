// Replies of NetBIOS peers, and both lists byte for byte.
#include <gtest/gtest.h>

#include "diagnostics/detector_row.h"
#include "diagnostics/node_status.h"
#include "diagnostics/safe_list.h"
#include "tests/support/host_records.h"
#include "tests/support/node_status_reply.h"
#include "tests/support/texts.h"

namespace {

TEST(NodeStatus, Takes_the_first_name_of_a_reply_that_is_long_enough) {
    std::string request("\xA2\x48\0\0\0\1\0\0\0\0\0\0\x20", 13);
    request += "CK" + std::string(30, 'A') + std::string("\0\0\x21\0\1", 5);
    EXPECT_EQ(std::string(kNodeStatusRequest.begin(), kNodeStatusRequest.end()), request);
    const auto nameIn = [](const Bytes& reply) {
        char name[kNodeNameBytes + 1] = "none";
        ParseNodeStatus(reply, name);
        return std::wstring(name, name + strlen(name));
    };
    const Bytes one = NodeStatusReply({"PRINTER"}), three = NodeStatusReply({"FIRST", "SECOND", "THIRD"});
    const auto cut = [](const Bytes& reply) { return Bytes(reply.begin(), reply.end() - 1); };
    const auto counting = [&](uint8_t names) { return WithCount(Longer(one, 1024), names); };
    EXPECT_EQ(Each(nameIn, {one, cut(one), three, cut(three)}), L"PRINTER|none|FIRST|none");
    EXPECT_EQ(Each(nameIn, {counting(0), counting(53), counting(54)}), L"PRINTER|PRINTER|none");
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
    const Bytes unterminated(200, uint8_t{'A'});
    const Bytes cut = {'n', 0, 'e', 0, 'w', 0};  // over the record read before it
    const Bytes damaged = unterminated + HostRecordOf(L"second") + cut;
    WriteWholeFile(L"hosts.dat", damaged);
    EXPECT_EQ(ListedHosts(), (Hosts{std::wstring(100, L'\x4141'), L"second", L"newond"}));
    EXPECT_TRUE(AddHost(nullptr, L"third"));
    EXPECT_EQ(ReadWholeFile(L"hosts.dat"), damaged + HostRecordOf(L"third"));
    Bytes filled = HostRecordOf(L"host");
    std::fill(filled.begin() + 10, filled.end(), uint8_t{'z'});
    WriteWholeFile(L"hosts.dat", filled);
    EXPECT_FALSE(AddHost(nullptr, L"HOST")) << "what follows a terminator means nothing";
}

TEST(SafeList, Entries_stay_in_their_order_until_all_equal_ones_are_removed) {
    const Bytes a = {0, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}, b(6, uint8_t{0xFF}), zero(6), cut = {0, 0x1A};
    const auto macOf = [](const Bytes& bytes) {
        MacAddress mac = {};
        std::ranges::copy(bytes, mac.bytes);
        return mac;
    };
    EXPECT_FALSE(SafeListRemove(nullptr, macOf(a)) || FileExists(L"slist.dat"));
    for (const Bytes& mac : {a, b, zero, a}) {
        EXPECT_TRUE(SafeListAdd(macOf(mac)));
    }
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), a + b + zero + a);
    HostRecord stranger = {};  // whose hardware address is unknown: the zeros in the list are not it
    stranger.address = 1;
    DetectorRow row;
    DescribeHost(stranger, row);
    EXPECT_EQ(row.image, kIntruderImage);
    WriteWholeFile(L"tmpslist", Bytes(100, 7));
    EXPECT_FALSE(SafeListRemove(nullptr, {{1, 2, 3, 4, 5, 6}}));
    EXPECT_TRUE(SafeListRemove(nullptr, macOf(a)));
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), b + zero);
    EXPECT_TRUE(SafeListRemove(nullptr, macOf(zero)) && SafeListRemove(nullptr, macOf(b)));
    EXPECT_TRUE(FileExists(L"slist.dat") && ReadWholeFile(L"slist.dat").empty());
    EXPECT_FALSE(FileExists(L"tmpslist"));
    // A cut tail is completed from the entry before it.
    const Bytes completed = cut + Bytes(4, uint8_t{0xFF});
    WriteWholeFile(L"slist.dat", b + cut);
    EXPECT_TRUE(SafeListContains(macOf(completed)) && SafeListRemove(nullptr, macOf(b)));
    EXPECT_EQ(ReadWholeFile(L"slist.dat"), completed);
}

TEST(MacText, Understands_what_was_written_upper_case_alone_and_no_cut_text) {
    const auto understood = [](const wchar_t* text) {
        MacAddress mac = {};
        return !ParseMacText(text, mac)                              ? L"no"
               : MacEquals(mac, {{0, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}}) ? L"equal"
                                                                     : L"other";
    };
    EXPECT_EQ(
        Each(understood, {L"00:1A:2B:3C:4D:5E", L"00-1A-2B-3C-4D-5E", L"00:1A:2B:3C:4D:5e", L"00:1A:2B:3C:4D:5", L""}),
        L"equal|equal|other|no|no");
}

}  // namespace
