// Waiting for the connection manager on a scripted clock, and lease times across time zones.
#include <gtest/gtest.h>

#include "adapters/dhcp_info.h"
#include "adapters/internet_connection.h"
#include "tests/fakes/fakes.h"
#include "tests/fakes/scripted_platform.h"

namespace {

TEST(InternetConnection, Every_outcome_of_the_wait) {
    constexpr auto kWaitTimeout = static_cast<DWORD>(WAIT_TIMEOUT);
    constexpr uint32_t kFailed = 0x80004005;
    // What the waits bring, the connection's statuses, the result, the time-outs of the waits.
    const std::tuple<std::vector<fakes::WaitOutcome>, std::vector<DWORD>, uint32_t, std::vector<DWORD>> rows[] = {
        {{{0, 0, 300}, {0, 0, 700}}, {17, 16}, 0, {12000, 11700}},
        {{{0}}, {0}, kFailed, {12000}},
        {{{0}}, {33}, kFailed, {12000}},
        {{{0}}, {37}, kFailed, {12000}},
        {{{0}}, {66}, kFailed, {12000}},
        {{{0}, {0}, {0}}, {32, 38, 16}, 0, {12000, 12000, 12000}},
        {{{0, 0, 12001}}, {}, kFailed, {12000}},
        {{{kWaitTimeout}}, {}, kFailed, {12000}},
        {{{WAIT_FAILED, 0x12345}}, {}, 0x80072345, {12000}},
        {{{WAIT_FAILED, 0x80040111}}, {}, 0x80040111, {12000}},
        {{{WAIT_FAILED, 0}, {0}}, {16}, 0, {12000, 12000}},
        {{{0x80, 0, 5}, {0}}, {16}, 0, {12000, 11995}},  // abandoned
        {{{0, 0, 11999}, {0, 0, 1}}, {17, 17, 16}, kFailed, {12000, 1}},
    };
    auto& manager = scripted::system.connectionManager;
    for (const auto& [waits, statuses, result, waitedMs] : rows) {
        fakes::waitedMs.clear();
        fakes::ScriptWaits(waits);
        manager = {};
        manager.statuses = statuses;
        InternetConnection out;
        EXPECT_EQ(static_cast<uint32_t>(EstablishInternetConnection(out)), result);
        EXPECT_EQ(fakes::waitedMs, waitedMs);
        EXPECT_EQ(std::pair(manager.open, out.connection != nullptr), std::pair(result == 0 ? 1 : 0, result == 0));
        CloseHandle(out.connection);
    }
    platform::ConnectionRequest expected = {};
    expected.cbSize = 64;
    expected.dwParams = expected.dwFlags = 1;
    expected.dwPriority = 8192;
    expected.guidDestNet = {0x436EF144, 0xB4FB, 0x4863, {0xA0, 0x41, 0x8F, 0x90, 0x5A, 0x62, 0xC5, 0x72}};
    EXPECT_EQ(memcmp(&manager.request, &expected, sizeof(expected)), 0) << "it names the internet";
}

TEST(InternetConnection, The_proxy_query_decides_the_way) {
    const std::tuple<HRESULT, HRESULT, DWORD, size_t> rows[] = {{S_OK, S_OK, kAccessThroughProxy, 255},
                                                                {E_NOINTERFACE, S_OK, kAccessDirect, 0},
                                                                {1, 1, kAccessDirect, 0},
                                                                {E_FAIL, E_FAIL, kAccessDirect, 0}};
    for (const auto& [proxy, result, accessType, proxyUnits] : rows) {
        scripted::system.connectionManager.proxyResult = proxy;
        scripted::system.connectionManager.proxy = std::u16string(256, u'p');  // without its terminator
        InternetConnection out;
        EXPECT_EQ(EstablishInternetConnection(out), result);
        EXPECT_EQ(std::pair(out.accessType, wcslen(out.proxy)), std::pair(accessType, proxyUnits));
        CloseHandle(out.connection);
    }
}

TEST(DhcpTimes, Are_shifted_by_the_standard_bias_and_wrap) {
    const std::tuple<time_t, DWORD, LONG, const wchar_t*> rows[] = {
        {0, 1, 300, L"Sun. Feb 7, 2106 01:28:16"},             // wraps below zero
        {0xFFFFFFFF, 1, -1, L"Thu. Jan 1, 1970 00:00:59"},     // wraps above
        {1152964800, 2, -345, L"Sat. Jul 15, 2006 17:45:00"},  // quarter hours; summer, yet standard time
        {1152964800, TIME_ZONE_ID_INVALID, 480, L"Sat. Jul 15, 2006 12:00:00"},
    };
    for (const auto& [utc, zone, biasMinutes, text] : rows) {
        fakes::SetTimeZone(zone, biasMinutes);
        scripted::system.adapters = {{.dhcpEnabled = true, .leaseExpires = utc}};
        DhcpInfo info;
        ASSERT_EQ(ReadDhcpInfo(info), DhcpState::Ready);
        EXPECT_STREQ(info.expires, text);
    }
}

}  // namespace
