// What a driver, the air or Native Wifi may give where the tools expect a card's values and access points.

// Before the header of Native Wifi, which makes macros of the same names.
#include "platform/ndis.h"

#include "item/item_state.h"
#include "platform/desktop/native_wifi_records.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/support/access_point_list.h"
#include "tests/support/wireless_values.h"
#include "wireless/access_point_texts.h"
#include "wireless/access_points.h"
#include "wireless/card_details.h"
#include "wireless/signal.h"

namespace {

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

Bytes FullList() {
    AccessPointListBuilder full;
    for (uint8_t i = 0; i <= kMostAccessPoints; ++i) {
        full.Add("", i, -50);
    }
    return full.Value();
}

const Fuzzer kAccessPoints(
    "access_points", {"wireless/access_points.cpp", "wireless/access_point_texts.cpp"}, FeedAccessPoints,
    {AccessPointListBuilder().Add("home", 1, -60, 1).Add(std::string(32, 's'), 2, -200, 0, 0).Value(),
     AccessPointListBuilder().Add("long", 1, -60).WithSsidLength(4000000000u).WithCount(9).Value(),
     AccessPointListBuilder().Add("still", 1, -60).Add("", 2, 0).WithLength(0, 0).Value(), FullList()});

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
                         FeedCardValues,
                         {{26, 0,   0, 0,   0, 20, 0, 0, 0, 6,   0, 0, 0, 0, 0, 0, 0, 0,    0,    0,    0, 'a',
                           0,  'b', 0, 'c', 0, 32, 0, 0, 0, 100, 0, 0, 0, 0, 0, 0, 0, 0x88, 0x2F, 0x25, 0},
                          {26, 0, 0, 0, 0, 20, 0xFF, 0, 0, 6, 0xFF, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 'a', 0, 'b', 0}});

void FeedNativeWifi(Input input) {
    std::vector<WLAN_BSS_ENTRY> entries((input.size() + sizeof(WLAN_BSS_ENTRY) - 1) / sizeof(WLAN_BSS_ENTRY));
    if (!entries.empty()) {
        memcpy(static_cast<void*>(entries.data()), input.data(), input.size());
    }
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

Bytes NativeEntries(size_t count) {
    WLAN_BSS_ENTRY entry = {};
    entry.dot11Ssid = {4, {'h', 'o', 'm', 'e'}};
    entry.dot11BssType = dot11_BSS_type_infrastructure;
    entry.dot11BssPhyType = dot11_phy_type_ht;
    entry.usCapabilityInformation = 0x0431;
    entry.ulChCenterFrequency = 2437000;
    entry.wlanRateSet = {4, {0x8002, 0x000C}};
    Bytes entries(count * sizeof(entry));
    for (size_t i = 0; i < count; ++i) {
        entry.lRssi = static_cast<LONG>(i) - 61;
        memcpy(&entries[i * sizeof(entry)], &entry, sizeof(entry));
    }
    return entries;
}

const Fuzzer kNativeWifi("native_wifi", {"platform/desktop/native_wifi_records.cpp"}, FeedNativeWifi,
                         {NativeEntries(1), NativeEntries(12)});

}  // namespace
