// The adapter and DHCP readings without memory or registry, and lease times across time zones.

#include <gtest/gtest.h>

#include "adapters/adapter_details.h"
#include "adapters/dhcp_info.h"
#include "item/item_state.h"
#include "item/settings.h"
#include "tests/fakes/fakes.h"
#include "tests/fakes/scripted_platform.h"

namespace {

TEST(AdapterFaults, Without_memory_the_fields_from_there_on_stay_empty) {
    scripted::system.adapters = {{.name = "{eth}", .dnsServers = {"9.9.9.9"}, .dhcpEnabled = true}};
    wcscpy(itemState.adapterName, L"{eth}");
    AdapterDetails details;
    fakes::FailCall("LocalAlloc", 1);
    ReadAdapterDetails(false, details);
    EXPECT_STREQ(details.title, L"");
    fakes::FailCall("LocalAlloc", 2);
    ReadAdapterDetails(false, details);
    EXPECT_STREQ(details.title, L"Adapter - Test adapter");
    EXPECT_STREQ(details.dns, L"");
    EXPECT_STREQ(details.wins, L"N/A");
    fakes::FailCall("LocalAlloc", 1);
    EXPECT_EQ(FindInterfaceIndex(L"{eth}"), kUnknownInterface);
    DhcpInfo info;
    fakes::FailCall("LocalAlloc", 1);
    EXPECT_EQ(ReadDhcpInfo(info), DhcpState::None);
}

TEST(AdapterFaults, A_registry_that_refuses_to_store_the_chosen_name_changes_nothing_else) {
    scripted::system.adapters = {{.name = "{eth}"}};
    fakes::FailCall("RegCreateKeyExW", 1);
    AdapterDetails details;
    ReadAdapterDetails(false, details);
    EXPECT_STREQ(details.address, L"192.168.7.33");
}

// A registry of the real system counts a terminator that it finds behind the text.
TEST(AdapterFaults, A_name_that_had_to_be_chosen_is_stored_without_its_terminator) {
    scripted::system.adapters = {{.name = "{eth}"}};
    AdapterDetails details;
    ReadAdapterDetails(false, details);
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_LOCAL_MACHINE, kItemKey, 0, KEY_READ, &key), ERROR_SUCCESS);
    DWORD bytes = 0;
    EXPECT_EQ(RegQueryValueExW(key, L"Adapter", nullptr, nullptr, nullptr, &bytes), ERROR_SUCCESS);
    RegCloseKey(key);
    EXPECT_EQ(bytes, 5 * sizeof(wchar_t));
}

TEST(DhcpTimes, Are_shifted_by_the_standard_bias_and_wrap) {
    struct Row {
        time_t utc;
        DWORD zone;
        LONG biasMinutes;
        const wchar_t* text;
    };
    const Row rows[] = {
        {0, 1, -60, L"Thu. Jan 1, 1970 01:00:00"},
        {0, 0, 0, L"Thu. Jan 1, 1970 00:00:00"},
        {0, 1, 300, L"Sun. Feb 7, 2106 01:28:16"},             // wraps below zero
        {0xFFFFFFFF, 1, -1, L"Thu. Jan 1, 1970 00:00:59"},     // wraps above
        {1152964800, 2, 480, L"Sat. Jul 15, 2006 04:00:00"},   // summer, yet standard time
        {1152964800, 2, -345, L"Sat. Jul 15, 2006 17:45:00"},  // quarter hours
        {1152964800, TIME_ZONE_ID_INVALID, 480, L"Sat. Jul 15, 2006 12:00:00"},
    };
    for (const Row& row : rows) {
        fakes::SetTimeZone(row.zone, row.biasMinutes);
        scripted::system.adapters = {{.dhcpEnabled = true, .leaseObtained = 1152964800, .leaseExpires = row.utc}};
        DhcpInfo info;
        ASSERT_EQ(ReadDhcpInfo(info), DhcpState::Ready);
        EXPECT_STREQ(info.expires, row.text);
        EXPECT_NE(info.obtained[0], 0);
    }
}

}  // namespace
