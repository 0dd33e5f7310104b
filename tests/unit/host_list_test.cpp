// hosts.dat byte for byte: what is added, what is read back, what a damaged file gives.

#include "diagnostics/host_list.h"

#include <gtest/gtest.h>

#include "tests/support/data_folder.h"
#include "tests/support/host_records.h"

namespace {

using Hosts = std::vector<std::wstring>;

TEST(HostList, Hosts_are_kept_once_in_the_order_in_which_they_were_added) {
    EXPECT_EQ(ListedHosts(), Hosts{});
    const std::wstring longest(99, L'x');
    const std::pair<std::wstring, bool> rows[] = {
        {L"example.com", true}, {L"10.0.0.1", true},  {L"Example.COM", false}, {L"example.co", true}, {longest, true},
        {L"a,\"b\" c", true},   {L"10.0.0.1", false}, {L"caf\x00E9", true},    {longest, false},
    };
    Bytes expected;
    for (const auto& [host, added] : rows) {
        EXPECT_EQ(AddHost(nullptr, host.c_str()), added) << testing::PrintToString(host);
        if (added) {
            expected = expected + HostRecordOf(host);
        }
    }
    EXPECT_EQ(ReadWholeFile(L"hosts.dat"), expected);
    EXPECT_EQ(ListedHosts(), (Hosts{L"example.com", L"10.0.0.1", L"example.co", longest, L"a,\"b\" c", L"caf\x00E9"}));
}

TEST(HostList, What_follows_a_terminator_means_nothing) {
    Bytes record = HostRecordOf(L"host");
    std::fill(record.begin() + 10, record.end(), uint8_t{'z'});
    WriteWholeFile(L"hosts.dat", record);
    EXPECT_EQ(ListedHosts(), Hosts{L"host"});
    EXPECT_FALSE(AddHost(nullptr, L"HOST"));
}

TEST(HostList, Damaged_files_are_read_without_running_over_a_record) {
    const Bytes unterminated(200, uint8_t{'A'});
    const Bytes cut = {'n', 0, 'e', 0, 'w', 0};  // over the record read before it
    WriteWholeFile(L"hosts.dat", unterminated + HostRecordOf(L"second") + cut);
    EXPECT_EQ(ListedHosts(), (Hosts{std::wstring(100, L'\x4141'), L"second", L"newond"}));
    EXPECT_TRUE(AddHost(nullptr, L"third"));
    EXPECT_EQ(ReadWholeFile(L"hosts.dat"), unterminated + HostRecordOf(L"second") + cut + HostRecordOf(L"third"));
}

}  // namespace
