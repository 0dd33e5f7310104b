// Faults under the adapter, DHCP, public address and wireless tools.
#include <gtest/gtest.h>

#include "adapters/adapter_details.h"
#include "adapters/dhcp_info.h"
#include "adapters/public_ip.h"
#include "item/item_state.h"
#include "options/adapter_properties.h"
#include "tests/support/access_point_list.h"
#include "tests/support/texts.h"
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
    return Narrow(Joined({details.title, details.type, details.address, details.secondDns, details.wins}));
}

std::string Properties() {
    AdapterProperty rows[kMostAdapterProperties];
    const int count = ReadAdapterProperties(rows);
    std::string text = count < 0 ? "none" : "";
    for (int i = 0; i < count; ++i) {
        text += Narrow(Joined({rows[i].item, rows[i].value})) + ";";
    }
    return text;
}

std::string Lease() {
    DhcpInfo info = {};
    const DhcpState state = ReadDhcpInfo(info);
    return std::string(state == DhcpState::Ready  ? ""
                       : state == DhcpState::None ? "none "
                                                  : "unreadable ") +
           Narrow(Joined({info.server, info.obtained, info.expires}));
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
    return (found ? Narrow(address) : "none") + ", open: " + std::to_string(scripted::system.connectionManager.open);
}

TEST(Faults, Of_the_adapter_tools) {
    const std::string named = "Adapter - Test adapter|";
    const std::string whole = named + "ethernet|192.168.7.33|8.8.8.8|N/A";
    const std::vector<std::string> parts = {"||||", named + "|192.168.7.33|8.8.8.8|N/A",
                                            named + "ethernet|192.168.7.33||N/A", named + "|192.168.7.33||N/A"};
    std::vector<std::string> partsOrNone = parts;
    partsOrNone.push_back("No adapter is available.||||");
    WalkFaults("adapter details", {UseChosenAdapter, Details}, whole, parts);
    WalkFaults("details of an adapter to be chosen", {UseNewAdapter, Details}, whole, partsOrNone);
    const std::string addresses = "IP Address|192.168.7.33;MAC Address|02:00:00:00:00:01;DHCP Server|10.0.0.1;";
    WalkFaults("adapter properties", {UseChosenAdapter, Properties},
               "Adapter|Test adapter;Type|ethernet;Speed|100 Mbps;" + addresses,
               {"none", "Adapter|Test adapter;" + addresses});
    const std::string first = "Thu. Jan 1, 1970 00:00:01";
    const std::string second = "Thu. Jan 1, 1970 00:00:02";
    WalkFaults("DHCP lease", {UseChosenAdapter, Lease}, "10.0.0.1|" + first + "|" + second,
               {"none ||", "unreadable ||", "10.0.0.1||" + second, "10.0.0.1|" + first + "|", "10.0.0.1||"});
    WalkFaults("release", {UseChosenAdapter, Change<LeaseAction::Release>}, "done", {"no interface", "failed"});
    WalkFaults("renew", {UseChosenAdapter, Change<LeaseAction::Renew>}, "done", {"no interface", "failed"});
    // An answer that breaks off counts as far as it came.
    WalkFaults("public address", {[] {}, PublicAddress}, "1.1.1.1, open: 0",
               {"2.2.2.2, open: 0", "1.1., open: 0", "none, open: 0"});
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
    const bool isThere = ReadCardDetails(details);
    return YesOrNo(isThere) + " " +
           Narrow(Joined({details.channel, details.authentication, details.mode, details.networkType}));
}

TEST(Faults, Of_the_wireless_tools) {
    WalkFaults("signal", {UseRadio, Signal}, "1 -60 -60", {"0 -200 -200", "1 -200 -200", "1 -200 -60"});
    WalkFaults("access points", {UseRadio, AccessPoints}, "usable bssid home -60",
               {"unusable ", "usable bssid  -60", "usable  -60", "usable bssid home", "usable "});
    WalkFaults("card details", {UseRadio, Card}, "yes (channel 6)|shared|auto|DSSS",
               {"no |||", "yes |shared|auto|DSSS", "yes (channel 6)||auto|DSSS", "yes (channel 6)|shared||DSSS",
                "yes (channel 6)|shared|auto|", "yes |||", "yes (channel 6)|||", "yes (channel 6)|shared||"});
}

}  // namespace
