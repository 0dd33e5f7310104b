// Replies of NetBIOS peers, both lists byte for byte, and a row of the detector that no dialog shows.
#include <gtest/gtest.h>

#include "diagnostics/detector_row.h"
#include "diagnostics/node_status.h"
#include "diagnostics/safe_list.h"
#include "tests/support/host_records.h"
#include "tests/support/node_status_reply.h"
#include "tests/support/texts.h"

namespace {

// Every other kind of row the detector's dialog shows.
TEST(DetectorRow, A_host_without_hardware_address_is_a_stranger_although_six_zeros_are_listed) {
    SafeListAdd({});
    HostRecord host = {};
    host.address = inet_addr("10.1.2.200");
    strcpy(host.name, "NAME");
    DetectorRow row;
    DescribeHost(host, row);
    EXPECT_EQ(Joined({row.cells.host, row.cells.address, row.cells.mac}), L"NAME|10.1.2.200|");
    EXPECT_EQ(std::pair(row.image, int{row.order}), std::pair(kIntruderImage, 200));
}

TEST(NodeStatus, Takes_the_first_name_of_a_reply_that_is_long_enough) {
    std::string request("\xA2\x48\0\0\0\1\0\0\0\0\0\0\x20", 13);
    request += "CK" + std::string(30, 'A') + std::string("\0\0\x21\0\1", 5);
    EXPECT_EQ(std::string(kNodeStatusRequest.begin(), kNodeStatusRequest.end()), request);
    const Bytes one = NodeStatusReply({"PRINTER"}), three = NodeStatusReply({"FIRST", "SECOND", "THIRD"});
    const std::pair<Bytes, const char*> rows[] = {
        {one, "PRINTER"},
        {{one.begin(), one.end() - 1}, "untouched"},
        {three, "FIRST"},
        {{three.begin(), three.end() - 1}, "untouched"},
        {WithCount(Longer(one, 1024), 0), "PRINTER"},
        {WithCount(Longer(one, 1024), 53), "PRINTER"},
        {WithCount(Longer(one, 1024), 54), "untouched"},
        {NodeStatusReply({""}), " "},
        {NodeStatusReply({" A"}), " A"},
        {NodeStatusReply({"FIFTEEN LETTERS"}), "FIFTEEN LETTERS"},
        {NodeStatusReply({"A \"b\",\xE9"}), "A \"b\",\xE9"},
    };
    for (const auto& [reply, expected] : rows) {
        char name[kNodeNameBytes + 1] = "untouched";
        ParseNodeStatus(reply, name);
        EXPECT_STREQ(name, expected) << reply.size();
    }
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
    const MacAddress mac = {{0x00, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}};
    const std::tuple<const wchar_t*, bool, bool> rows[] = {{L"00:1A:2B:3C:4D:5E", true, true},
                                                           {L"00-1A-2B-3C-4D-5E", true, true},
                                                           {L"00:1A:2B:3C:4D:5e", true, false},
                                                           {L"00:1A:2B:3C:4D:5", false, false},
                                                           {L"0", false, false},
                                                           {L"", false, false}};
    for (const auto& [text, isMac, isEqual] : rows) {
        MacAddress parsed = {};
        EXPECT_EQ((std::pair{ParseMacText(text, parsed), MacEquals(parsed, mac)}), std::pair(isMac, isEqual)) << text;
        EXPECT_TRUE(isMac || MacEquals(parsed, {})) << "untouched";
    }
}

}  // namespace
