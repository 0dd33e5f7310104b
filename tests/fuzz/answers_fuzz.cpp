// Any bytes as what others answer: programs and machines short texts, drivers and Native Wifi a card's values and
// access points.

// Before the header of Native Wifi, which makes macros of the same names.
#include "platform/ndis.h"

#include <algorithm>

#include "adapters/public_ip.h"
#include "diagnostics/node_status.h"
#include "item/item_state.h"
#include "platform/desktop/arp_text.h"
#include "platform/desktop/native_wifi_records.h"
#include "platform/desktop/proxy_list.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/support/access_point_list.h"
#include "tests/support/data_folder.h"
#include "tests/support/node_status_reply.h"
#include "tests/support/wireless_values.h"
#include "wireless/access_point_texts.h"
#include "wireless/access_points.h"
#include "wireless/card_details.h"
#include "wireless/signal.h"

namespace {

const Fuzzer kArpText("arp_text", {"platform/desktop/arp_text.cpp"},
                      {BytesOf("IP address       HW type     Flags       HW address            Mask     Device\n"
                               "192.168.7.2      0x1         0x2         02:00:00:00:00:02     *        eth0\n"
                               "192.168.7.1      0x1         0x0         00:00:00:00:00:00     *        eth0\n"
                               "10.0.0.1 0x1 0x6 fe:dc:ba:98:76:54 * eth1\n")},
                      [](Input input) {
                          std::vector<MIB_IPNETROW> rows(input.size() / platform::kShortestArpLine + 1);
                          rows.resize(platform::ParseArpText(std::string(TextOf(input)).c_str(), rows));
                          Demand(std::ranges::is_sorted(rows, {}, [](auto& row) { return ntohl(row.dwAddr); }));
                      });

void FeedProxyList(Input input) {
    const std::wstring list(input.begin(), input.end());
    wchar_t host[platform::kProxyHostUnits] = L"?";
    WORD port = 0;
    if (platform::FindHttpProxy(list.c_str(), host, &port)) {
        const size_t length = wcsnlen(host, platform::kProxyHostUnits);
        Demand(port != 0 && length != 0 && length < platform::kProxyHostUnits && wcspbrk(host, L"; \t=:") == nullptr);
    }
}

const Fuzzer kProxyList("proxy_list", {"platform/desktop/proxy_list.cpp"},
                        {BytesOf("https=other:1;http=http://10.0.0.1:3128"), BytesOf(" bad:65536; good:1"),
                         BytesOf(std::string(platform::kProxyHostUnits, 'p') + ";q")},
                        FeedProxyList);

const Fuzzer kPublicIp("public_ip", {"adapters/public_ip.cpp"},
                       {BytesOf("203.0.113.7\r\n"), BytesOf({"203.0.113.7\0<html>", 18}),
                        BytesOf("12345678901234567890")},
                       [](Input input) {
                           wchar_t address[kPublicIpUnits] = L"?";
                           const bool found = ParseEchoBody(TextOf(input), address);
                           Demand(wcsnlen(address, kPublicIpUnits) <= kPublicIpCharacters);
                           Demand(!found || wcsspn(address, L"0123456789.") == wcslen(address));
                       });

const Fuzzer kNodeStatus("node_status", {"diagnostics/node_status.cpp"},
                         {NodeStatusReply({"PRINTER"}), NodeStatusReply({"FIFTEEN LETTERS", ""}),
                          WithCount(Longer(NodeStatusReply({""}), 100), 3)},
                         [](Input input) {
                             char name[kNodeNameBytes + 1];
                             std::ranges::fill(name, '?');
                             Demand(ParseNodeStatus(input, name) == (name[kNodeNameBytes] == 0));
                         });

void FeedAccessPoints(Input list) {
    AccessPointTable table;
    ResetAccessPoints(table);
    MergeAccessPoints(table, list);
    const int count = table.count;
    Demand(count >= 0 && count <= kMostAccessPoints);
    AccessPointTexts texts;
    for (int i = 0; i < count; ++i) {
        Demand(strnlen(table.entries[i].ssid, kSsidBytes + 1) <= kSsidBytes);
        DescribeSelectedAccessPoint(table.entries[i], texts);
    }
    MergeAccessPoints(table, list);
    Demand(table.count == count || count == kMostAccessPoints);  // all are known by now
}

// More than the table holds.
Bytes FullList() {
    AccessPointListBuilder full;
    for (uint8_t i = 0; i <= kMostAccessPoints; ++i) {
        full.Add("", i, -50);
    }
    return full.Value();
}

const Fuzzer kAccessPoints(
    "access_points", {"wireless/access_points.cpp", "wireless/access_point_texts.cpp"},
    {AccessPointListBuilder().Add("home", 1, -60, 1).Add(std::string(32, 's'), 2, -200, 0, 0).Value(),
     AccessPointListBuilder().Add("long", 1, -60).WithSsidLength(4000000000u).WithCount(9).Value(),
     AccessPointListBuilder().Add("still", 1, -60).Add("", 2, 0).WithLength(0, 0).Value(), FullList()},
    FeedAccessPoints);

// The first byte parts the input into the binding and the value that every other question gets.
void FeedCardValues(Input input) {
    const size_t bindingBytes = input.empty() ? 0 : input[0];
    Take(input, 1);
    const Input binding = Take(input, bindingBytes);
    UseWireless();
    auto& wireless = scripted::system.wireless;
    wireless.requests.clear();
    wireless.bindingAnswer = {binding.begin(), binding.end()};
    for (const uint32_t oid :
         {OID_802_11_BSSID, OID_802_11_SSID, OID_802_11_INFRASTRUCTURE_MODE, OID_802_11_AUTHENTICATION_MODE,
          OID_802_11_WEP_STATUS, OID_802_11_NETWORK_TYPE_IN_USE, OID_802_11_RSSI, OID_802_11_CONFIGURATION}) {
        wireless.values[oid] = {input.begin(), input.end()};
    }
    CardDetails details;
    const bool isThere = ReadCardDetails(details);
    AccessPointTable table;
    ResetAccessPoints(table);
    Demand(ScanAccessPoints(table).usable == isThere && table.count == 0);
    Demand(strnlen(table.shownSsid, sizeof(table.shownSsid)) < sizeof(table.shownSsid));
    Demand(QuerySignal() == (isThere ? 1 : 0) && (isThere || itemState.SignalDbm == kNoSignal));
}

// A binding whose name stands behind the record's five fields, then a configuration; and one that points elsewhere.
const Fuzzer kCardValues("card_values", {"wireless/ndis.cpp", "wireless/card_details.cpp", "wireless/signal.cpp"},
                         {Bytes{26} + NdisFields({20, 6, 0, 0, 0}) + Bytes{'a', 0, 'b', 0, 'c', 0} +
                              NdisFields({32, 100, 0, 2437000}),
                          Bytes{26} + NdisFields({0xFF0014, 0xFF06, 0, 0, 0}) + Bytes{'a', 0, 'b', 0}},
                         FeedCardValues);

void FeedNativeWifi(Input input) {
    std::vector<WLAN_BSS_ENTRY> entries((input.size() + sizeof(WLAN_BSS_ENTRY) - 1) / sizeof(WLAN_BSS_ENTRY));
    std::ranges::copy(input, reinterpret_cast<uint8_t*>(entries.data()));
    Bytes value(WirelessDevice::kValueBytes);
    const size_t bytes = platform::WriteNdisBssidList(entries, value);
    Demand(bytes <= value.size());
    AccessPointTable table;
    ResetAccessPoints(table);
    MergeAccessPoints(table, std::span(value).first(bytes));
    Demand(static_cast<size_t>(table.count) <= entries.size() && (entries.empty() || table.count > 0));
    for (const WLAN_BSS_ENTRY& entry : entries) {
        Demand(platform::WriteNdisSsid(entry.dot11Ssid, value) == 4 + kSsidBytes && ReadNdisField(value.data()) <= 32);
        platform::WriteNdisConfiguration(entry, value);
    }
}

// Entries with a sound length of each text, and with unsound ones.
const Fuzzer kNativeWifi("native_wifi", {"platform/desktop/native_wifi_records.cpp"},
                         {Bytes(12 * sizeof(WLAN_BSS_ENTRY)), Bytes(2 * sizeof(WLAN_BSS_ENTRY), 0x81)}, FeedNativeWifi);

}  // namespace
