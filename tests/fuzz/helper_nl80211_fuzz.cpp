// Foreign bytes as the kernel's wireless answers, turned into NDIS values.

#include <linux/nl80211.h>

#include "platform/linux/ndis_records.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/unit/helper/netlink_builder.h"

namespace {

using namespace helper;

void ParseAnswer(std::span<const uint8_t> input) {
    WirelessInterface interface;
    Demand(!ParseInterface(input, interface) || (interface.index != 0 && !interface.name.empty()));
    Station station;
    ParseStation(input, station);
    AccessPoint accessPoint;
    if (ParseAccessPoint(input, accessPoint)) {
        WepStatus(accessPoint);
        AuthenticationMode(accessPoint.security);
        const NdisValue list = BssidListValue(std::span(&accessPoint, 1), 1008);
        Demand(list.size() == sizeof(uint32_t) + kBssidEntryBytes && accessPoint.ssid.size() <= kMaxSsidBytes);
        ConfigurationValue(accessPoint);
    }
}

Bytes ScanAnswer() {
    const Bytes rates = {0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24};
    const Bytes rsn = {1, 0, 0, 0x0F, 0xAC, 4, 1, 0, 0, 0x0F, 0xAC, 4, 1, 0, 0, 0x0F, 0xAC, 2, 0, 0};
    const Bytes wpa = {0, 0x50, 0xF2, 1, 1, 0, 0, 0x50, 0xF2, 2, 1, 0, 0, 0x50, 0xF2, 2, 1, 0, 0, 0x50, 0xF2, 1};
    const Bytes elements = Element(0, Text("home")) + Element(1, rates) + Element(6, {10, 0}) + Element(48, rsn) +
                           Element(50, {0x30, 0xFF}) + Element(221, wpa);
    return Number<uint32_t>(NL80211_ATTR_IFINDEX, 3) +
           Attribute(
               NL80211_ATTR_BSS,
               Attribute(NL80211_BSS_BSSID, {2, 0, 0, 0, 0, 1}) + Number<uint32_t>(NL80211_BSS_FREQUENCY, 2437) +
                   Number<uint16_t>(NL80211_BSS_BEACON_INTERVAL, 100) + Number<uint16_t>(NL80211_BSS_CAPABILITY, 0x11) +
                   Number<int32_t>(NL80211_BSS_SIGNAL_MBM, -6650) + Number<uint8_t>(NL80211_BSS_SIGNAL_UNSPEC, 60) +
                   Number<uint32_t>(NL80211_BSS_STATUS, NL80211_BSS_STATUS_ASSOCIATED) +
                   Attribute(NL80211_BSS_BEACON_IES, Element(0, {0, 0, 0})) +
                   Attribute(NL80211_BSS_INFORMATION_ELEMENTS, elements));
}

std::vector<Bytes> Answers() {
    return {ScanAnswer(),
            Number<uint32_t>(NL80211_ATTR_IFINDEX, 3) + Attribute(NL80211_ATTR_IFNAME, Text("wlan0")) +
                Number<uint32_t>(NL80211_ATTR_IFTYPE, NL80211_IFTYPE_STATION),
            Attribute(NL80211_ATTR_MAC, {2, 0, 0, 0, 0, 1}) +
                Attribute(NL80211_ATTR_STA_INFO, Number<uint8_t>(NL80211_STA_INFO_SIGNAL, 0xC8))};
}

const RegisteredFuzzer kFuzzer({"helper_nl80211",
                                {"platform/linux/nl80211_answers.cpp", "platform/linux/information_elements.cpp",
                                 "platform/linux/ndis_records.cpp"},
                                ParseAnswer,
                                Answers});

}  // namespace
