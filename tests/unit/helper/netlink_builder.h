// tests/unit/helper/netlink_builder.h - the kernel's wireless messages: attributes of length, type, value and padding.
#pragma once

#include <linux/nl80211.h>

#include <cstring>

#include "tests/unit/helper/messages.h"

inline Bytes Attribute(uint16_t type, const Bytes& value) {
    const uint16_t header[] = {static_cast<uint16_t>(4 + value.size()), type};
    Bytes bytes(sizeof(header));
    memcpy(bytes.data(), header, sizeof(header));
    bytes = bytes + value;
    bytes.resize((bytes.size() + 3) & ~size_t{3});
    return bytes;
}

template <typename T>
Bytes Number(uint16_t type, T number) {
    Bytes value(sizeof(number));
    memcpy(value.data(), &number, sizeof(number));
    return Attribute(type, value);
}

inline Bytes Text(std::string_view text) {
    return {text.begin(), text.end()};
}

inline Bytes Element(uint8_t number, const Bytes& body) {
    return Bytes{number, static_cast<uint8_t>(body.size())} + body;
}

inline const Bytes kAddress = {2, 0, 0, 0, 0, 1};
inline const Bytes kRates = {0x82, 0x84, 0x8B, 0x96, 0x0C, 0x12, 0x18, 0x24};
inline const Bytes kWpa2Psk = {1, 0, 0, 0x0F, 0xAC, 4, 1, 0, 0, 0x0F, 0xAC, 4, 1, 0, 0, 0x0F, 0xAC, 2, 0, 0};
inline const Bytes kWpaPsk = {0, 0x50, 0xF2, 1, 1, 0, 0, 0x50, 0xF2, 2, 1, 0, 0, 0x50, 0xF2, 2, 1, 0, 0, 0x50, 0xF2, 2};
inline const Bytes kHome = Element(0, Text("home")) + Element(1, kRates) + Element(48, kWpa2Psk) + Element(50, {0x30});

// One message of a scan dump: an access point that this machine uses, without unit of its signal if `signal` says so.
inline Bytes ScanMessage(const Bytes& elements, uint16_t capability = 0x11, uint32_t megahertz = 2437,
                         const Bytes& signal = Number<int32_t>(NL80211_BSS_SIGNAL_MBM, -6650)) {
    return Number<uint32_t>(NL80211_ATTR_GENERATION, 5) +
           Attribute(NL80211_ATTR_BSS, Attribute(NL80211_BSS_BSSID, kAddress) +
                                           Number(NL80211_BSS_FREQUENCY, megahertz) +
                                           Number<uint16_t>(NL80211_BSS_BEACON_INTERVAL, 100) +
                                           Number(NL80211_BSS_CAPABILITY, capability) + signal +
                                           Number<uint32_t>(NL80211_BSS_STATUS, NL80211_BSS_STATUS_ASSOCIATED) +
                                           Attribute(NL80211_BSS_BEACON_IES, Element(0, {0, 0, 0})) +
                                           Attribute(NL80211_BSS_INFORMATION_ELEMENTS, elements));
}

inline Bytes InterfaceMessage(uint32_t index = 3) {
    return Number(NL80211_ATTR_IFINDEX, index) + Attribute(NL80211_ATTR_IFNAME, Text("wlan0") + Bytes{0}) +
           Number<uint32_t>(NL80211_ATTR_IFTYPE, NL80211_IFTYPE_STATION);
}

inline Bytes StationMessage() {
    return Attribute(NL80211_ATTR_MAC, kAddress) +
           Attribute(NL80211_ATTR_STA_INFO | 0x8000, Number<int8_t>(NL80211_STA_INFO_SIGNAL, -71));  // marked as nested
}
