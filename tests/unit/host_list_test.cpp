// hosts.dat byte for byte: what is added, what is read back, what a damaged file gives.
#include "diagnostics/host_list.h"

#include <gtest/gtest.h>

#include "tests/support/host_records.h"

namespace {

using Hosts = std::vector<std::wstring>;

TEST(HostList, Hosts_are_kept_once_in_the_order_in_which_they_were_added) {
    const Hosts hosts = {L"example.com",         L"10.0.0.1",  L"example.co",
                         std::wstring(99, L'x'), L"a,\"b\" c", L"caf\x00E9"};
    Bytes expected;
    for (const std::wstring& host : hosts) {
        EXPECT_TRUE(AddHost(nullptr, host.c_str()));
        expected = expected + HostRecordOf(host);
    }
    EXPECT_FALSE(AddHost(nullptr, L"Example.COM"));
    EXPECT_FALSE(AddHost(nullptr, hosts[3].c_str()));
    EXPECT_EQ(ReadWholeFile(L"hosts.dat"), expected);
    EXPECT_EQ(ListedHosts(), hosts);
}

TEST(HostList, Damaged_files_are_read_without_running_over_a_record) {
    const Bytes unterminated(200, uint8_t{'A'});
    const Bytes cut = {'n', 0, 'e', 0, 'w', 0};  // over the record read before it
    const Bytes second = HostRecordOf(L"second");
    WriteWholeFile(L"hosts.dat", unterminated + second + cut);
    EXPECT_EQ(ListedHosts(), (Hosts{std::wstring(100, L'\x4141'), L"second", L"newond"}));
    EXPECT_TRUE(AddHost(nullptr, L"third"));
    EXPECT_EQ(ReadWholeFile(L"hosts.dat"), unterminated + second + cut + HostRecordOf(L"third"));
    Bytes filled = HostRecordOf(L"host");
    std::fill(filled.begin() + 10, filled.end(), uint8_t{'z'});
    WriteWholeFile(L"hosts.dat", filled);
    EXPECT_FALSE(AddHost(nullptr, L"HOST")) << "what follows a terminator means nothing";
}

}  // namespace
