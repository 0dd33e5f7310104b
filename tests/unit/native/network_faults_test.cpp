// Faults under the adapter, DHCP, public address and wireless tools; waits for the connection manager on a scripted
// clock; lease times across time zones.
#include <gtest/gtest.h>

#include "adapters/adapter_details.h"
#include "adapters/dhcp_info.h"
#include "adapters/internet_connection.h"
#include "adapters/public_ip.h"
#include "item/item_state.h"
#include "options/adapter_properties.h"
#include "tests/fakes/fakes.h"
#include "tests/support/access_point_list.h"
#include "tests/support/wireless_values.h"
#include "tests/unit/native/fault_walk.h"
#include "wireless/access_points.h"
#include "wireless/card_details.h"
#include "wireless/signal.h"

namespace {

void UseNewAdapter() {
    scripted::system.adapters = {{.name = "{eth}",
                                  .dnsServers = {"9.9.9.9", "8.8.8.8"},
                                  .dhcpEnabled = true,
                                  .dhcpServer = "10.0.0.1",
                                  .leaseObtained = 1,
                                  .leaseExpires = 2}};
}

void UseChosenAdapter() {
    UseNewAdapter();
    wcscpy(itemState.adapterName, L"{eth}");
}

std::string Details() {
    AdapterDetails details;
    ReadAdapterDetails(false, details);
    return Told(details.title, details.type, details.address, details.secondDns, details.wins);
}

std::string Properties() {
    AdapterProperty rows[kMostAdapterProperties] = {};
    const int count = ReadAdapterProperties(rows);
    return Told(count, rows[0].value, rows[1].value, rows[2].value, rows[5].value);
}

std::string Lease() {
    DhcpInfo info = {};
    const DhcpState state = ReadDhcpInfo(info);
    return Told(state == DhcpState::Ready, info.server, info.obtained, info.expires);
}

template <LeaseAction Action>
std::string Change() {
    const LeaseResult result = ChangeLease(Action);
    return result == LeaseResult::Done ? "done" : result == LeaseResult::Failed ? "failed" : "no interface";
}

std::string PublicAddress() {
    scripted::system.internet.answers = {{L"ip1.quorvane.net", {{"1.1.", "1.1"}}},
                                         {L"ip2.quorvane.net", {{"2.2.2.2"}}}};
    wchar_t address[kPublicIpUnits] = {};
    const bool found = DetectPublicIpFromAny(address);
    return Told(found ? address : L"none", scripted::system.connectionManager.open);
}

TEST(Faults, Of_the_adapter_tools) {
    const std::string details = "Adapter - Test adapter;ethernet;192.168.7.33;8.8.8.8;N/A;";
    const std::string lessDetails = "(Adapter - Test adapter;(ethernet)?;192.168.7.33;(8.8.8.8)?;N/A|;;;;);";
    WalkFaults("adapter details", UseChosenAdapter, Details, details, lessDetails);
    WalkFaults("details of an adapter to be chosen", UseNewAdapter, Details, details + "Adapter: {eth};",
               "(" + details + "|" + lessDetails + ")(Adapter: .eth.;)?|No adapter is available.;;;;;", details);
    WalkFaults("adapter properties", UseChosenAdapter, Properties, "6;Test adapter;ethernet;100 Mbps;10.0.0.1;",
               "-1;;;;;|4;Test adapter;192.168.7.33;02:00:00:00:00:01;;");
    WalkFaults("DHCP lease", UseChosenAdapter, Lease,
               "yes;10.0.0.1;Thu. Jan 1, 1970 00:00:01;Thu. Jan 1, 1970 00:00:02;",
               "no;;;;|yes;10.0.0.1;(Thu. Jan 1, 1970 00:00:01)?;(Thu. Jan 1, 1970 00:00:02)?;");
    WalkFaults("release", UseChosenAdapter, Change<LeaseAction::Release>, "done", "no interface|failed");
    WalkFaults("renew", UseChosenAdapter, Change<LeaseAction::Renew>, "done", "no interface|failed");
    // An answer that breaks off counts as far as it came.
    WalkFaults("public address", UseNothing, PublicAddress, "1.1.1.1;0;", "(2.2.2.2|1.1.|none);0;");
}

void UseRadio() {
    UseWireless();
    scripted::system.wireless.values = {{OID_802_11_RSSI, NdisFields({static_cast<uint32_t>(-60)})},
                                        {OID_802_11_SSID, SsidValue("home", 4)},
                                        {OID_802_11_BSSID, {1, 2, 3, 4, 5, 6}},
                                        {OID_802_11_BSSID_LIST, AccessPointListBuilder().Add("home", 1, -60).Value()},
                                        {OID_802_11_CONFIGURATION, NdisFields({32, 100, 7, 2437000})},
                                        {OID_802_11_AUTHENTICATION_MODE, NdisFields({1})},
                                        {OID_802_11_NETWORK_TYPE_IN_USE, NdisFields({1})},
                                        {OID_802_11_INFRASTRUCTURE_MODE, NdisFields({2})}};
}

std::string Signal() {
    const int present = QuerySignal();
    return Told(present, itemState.SignalDbm, itemState.SignalHistory[kSignalReadings - 1]);
}

std::string AccessPoints() {
    AccessPointTable table;
    ResetAccessPoints(table);
    const ScanOutcome outcome = ScanAccessPoints(table);
    return Told(outcome.usable, outcome.bssidChanged, table.shownSsid, table.count);
}

std::string Card() {
    CardDetails details;
    const bool isThere = ReadCardDetails(details);
    return Told(isThere, details.channel, details.authentication, details.mode, details.networkType);
}

TEST(Faults, Of_the_wireless_tools) {
    WalkFaults("signal", UseRadio, Signal, "1;-60;-60;", "[01];-200;-200;|1;-200;-60;");
    WalkFaults("access points", UseRadio, AccessPoints, "yes;yes;home;1;",
               "no;no;;0;|yes;(yes|no);;1;|yes;yes;home;0;|yes;no;;0;");
    WalkFaults("card details", UseRadio, Card, "yes;(channel 6);shared;auto;DSSS;",
               "no;;;;;|yes;(.channel 6.)?;(shared)?;(auto)?;(DSSS)?;");
}

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
