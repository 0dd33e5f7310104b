// Faults under the adapter, DHCP, public address and wireless tools.

#include <gtest/gtest.h>

#include "adapters/adapter_details.h"
#include "adapters/dhcp_info.h"
#include "adapters/public_ip.h"
#include "item/item_state.h"
#include "options/adapter_properties.h"
#include "tests/fakes/scripted_platform.h"
#include "tests/support/access_point_list.h"
#include "tests/support/wireless_values.h"
#include "tests/unit/native/fault_walk.h"
#include "wireless/access_points.h"
#include "wireless/card_details.h"
#include "wireless/signal.h"

namespace {

std::string Joined(std::initializer_list<std::wstring> texts) {
    std::string joined;
    for (const std::wstring& text : texts) {
        joined += Narrow(text) + ";";
    }
    return joined;
}

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
    return Joined({details.title, details.type, details.address, details.secondDns, details.wins});
}

std::string Properties() {
    AdapterProperty rows[kMostAdapterProperties];
    std::string text;
    const int count = ReadAdapterProperties(rows);
    for (int i = 0; i < count; ++i) {
        text += Joined({rows[i].item});
    }
    return count < 0 ? "none" : text;
}

std::string Lease() {
    DhcpInfo info = {};
    const DhcpState state = ReadDhcpInfo(info);
    return (state == DhcpState::Ready  ? "lease "
            : state == DhcpState::None ? "none "
                                       : "unreadable ") +
           Joined({info.server, info.obtained, info.expires});
}

template <LeaseAction Action>
std::string Change() {
    const LeaseResult result = ChangeLease(Action);
    return result == LeaseResult::Done ? "done" : result == LeaseResult::Failed ? "failed" : "no interface";
}

std::string PublicAddress() {
    auto& internet = scripted::system.internet;
    internet.answers = {{L"ip1.quorvane.net", {{"1.1.", "1.1"}}}, {L"ip2.quorvane.net", {{"2.2.2.2"}}}};
    wchar_t address[kPublicIpUnits] = {};
    const bool found = DetectPublicIpFromAny(address);
    return (found ? Narrow(address) : "none") + ", open: " + std::to_string(scripted::system.connectionManager.open);
}

TEST(Faults, Of_the_adapter_tools) {
    const std::string named = "Adapter - Test adapter;";
    const std::string whole = named + "ethernet;192.168.7.33;8.8.8.8;N/A;";
    const std::string untyped = named + ";192.168.7.33;8.8.8.8;N/A;";
    const std::string withoutDns = named + "ethernet;192.168.7.33;;N/A;";
    const std::string neither = named + ";192.168.7.33;;N/A;";
    const std::string first = "Thu. Jan 1, 1970 00:00:01;";
    const std::string second = "Thu. Jan 1, 1970 00:00:02;";
    WalkFaults("adapter details", {UseChosenAdapter, Details, nullptr}, whole, {";;;;;", untyped, withoutDns, neither});
    WalkFaults("details of an adapter to be chosen", {UseNewAdapter, Details, nullptr}, whole,
               {"No adapter is available.;;;;;", ";;;;;", untyped, withoutDns, neither});
    WalkFaults("adapter properties", {UseChosenAdapter, Properties, nullptr},
               "Adapter;Type;Speed;IP Address;MAC Address;DHCP Server;",
               {"none", "Adapter;IP Address;MAC Address;DHCP Server;"});
    WalkFaults("DHCP lease", {UseChosenAdapter, Lease, nullptr}, "lease 10.0.0.1;" + first + second,
               {"none ;;;", "unreadable ;;;", "lease 10.0.0.1;;" + second, "lease 10.0.0.1;" + first + ";",
                "lease 10.0.0.1;;;"});
    WalkFaults("release", {UseChosenAdapter, Change<LeaseAction::Release>, nullptr}, "done",
               {"no interface", "failed"});
    WalkFaults("renew", {UseChosenAdapter, Change<LeaseAction::Renew>, nullptr}, "done", {"no interface", "failed"});
    // An answer that breaks off counts as far as it came.
    WalkFaults("public address", {[] {}, PublicAddress, nullptr}, "1.1.1.1, open: 0",
               {"2.2.2.2, open: 0", "1.1., open: 0", "none, open: 0"});
}

void UseRadio() {
    UseWireless();
    auto& values = scripted::system.wireless.values;
    values[OID_802_11_RSSI] = NdisFields({static_cast<uint32_t>(-60)});
    values[OID_802_11_SSID] = SsidValue("home", 4);
    values[OID_802_11_BSSID] = {1, 2, 3, 4, 5, 6};
    values[OID_802_11_BSSID_LIST] = AccessPointListBuilder().Add("home", 1, -60).Value();
    values[OID_802_11_CONFIGURATION] = NdisFields({32, 100, 7, 2437000});
    values[OID_802_11_AUTHENTICATION_MODE] = values[OID_802_11_NETWORK_TYPE_IN_USE] = NdisFields({1});
    values[OID_802_11_INFRASTRUCTURE_MODE] = NdisFields({2});
}

std::string Signal() {
    const int present = QuerySignal();
    return std::to_string(present) + " " + std::to_string(itemState.SignalDbm) + " " +
           std::to_string(itemState.SignalHistory[kSignalReadings - 1]);
}

std::string AccessPoints() {
    AccessPointTable table;
    ResetAccessPoints(table);
    const ScanOutcome outcome = ScanAccessPoints(table);
    return std::string(outcome.usable ? "usable" : "unusable") + (outcome.bssidChanged ? " bssid " : " ") +
           table.shownSsid + (table.count > 0 ? " -60" : "");
}

std::string Card() {
    CardDetails details;
    const bool there = ReadCardDetails(details);
    return YesOrNo(there) + " " + Joined({details.channel, details.authentication, details.mode, details.networkType});
}

TEST(Faults, Of_the_wireless_tools) {
    WalkFaults("signal", {UseRadio, Signal, nullptr}, "1 -60 -60", {"0 -200 -200", "1 -200 -200", "1 -200 -60"});
    WalkFaults("access points", {UseRadio, AccessPoints, nullptr}, "usable bssid home -60",
               {"unusable ", "usable bssid  -60", "usable  -60", "usable bssid home", "usable "});
    WalkFaults("card details", {UseRadio, Card, nullptr}, "yes (channel 6);shared;auto;DSSS;",
               {"no ;;;;", "yes ;shared;auto;DSSS;", "yes (channel 6);;auto;DSSS;", "yes (channel 6);shared;;DSSS;",
                "yes (channel 6);shared;auto;;", "yes ;;;;", "yes (channel 6);;;;", "yes (channel 6);shared;;;"});
}

}  // namespace
