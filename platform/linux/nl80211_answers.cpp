// Walks netlink attributes: a length, a type and the value, padded to four bytes (linux/netlink.h).

#include "platform/linux/nl80211_answers.h"

#include <linux/netlink.h>
#include <linux/nl80211.h>

#include <algorithm>
#include <bit>
#include <cstring>

#include "platform/linux/information_elements.h"

namespace helper {
namespace {

using Bytes = std::span<const uint8_t>;

constexpr uint32_t kCapabilityIbss = 1u << 1;  // IEEE 802.11, 9.4.1.4
constexpr uint32_t kCapabilityPrivacy = 1u << 4;

template <typename T>
std::optional<T> NumberIn(Bytes value) {
    if (value.size() < sizeof(T)) {
        return std::nullopt;
    }
    T number;
    memcpy(&number, value.data(), sizeof(T));  // netlink numbers have the machine's byte order
    return number;
}

// Calls visit(type, value) for every whole attribute.
template <typename Visit>
void ForEachAttribute(Bytes attributes, Visit visit) {
    nlattr header;
    while (attributes.size() >= sizeof(header)) {
        memcpy(&header, attributes.data(), sizeof(header));
        if (header.nla_len < sizeof(header) || header.nla_len > attributes.size()) {
            return;
        }
        visit(header.nla_type & NLA_TYPE_MASK, attributes.subspan(sizeof(header), header.nla_len - sizeof(header)));
        attributes = attributes.subspan(std::min<size_t>(NLA_ALIGN(header.nla_len), attributes.size()));
    }
}

bool TakeMac(Bytes value, MacAddress& address) {
    if (value.size() < address.size()) {
        return false;
    }
    std::copy_n(value.begin(), address.size(), address.begin());
    return true;
}

void ApplyStationInfo(Bytes info, Station& station) {
    ForEachAttribute(info, [&](int type, Bytes value) {
        if (type == NL80211_STA_INFO_SIGNAL && !value.empty()) {
            station.signalDbm = std::bit_cast<int8_t>(value[0]);
        }
    });
}

// An unspecified unit of 0 to 100 has no dBm; half of it above -100 is the usual reading.
int32_t SignalOfPercent(uint8_t percent) {
    return std::min<int32_t>(percent, 100) / 2 - 100;
}

struct BssParts {
    bool hasBssid = false;
    Bytes elements;
    Bytes beaconElements;
};

void ApplyBssAttribute(int type, Bytes value, BssParts& parts, AccessPoint& accessPoint) {
    switch (type) {
        case NL80211_BSS_BSSID:
            parts.hasBssid = TakeMac(value, accessPoint.bssid);
            break;
        case NL80211_BSS_FREQUENCY:
            accessPoint.frequencyMhz = NumberIn<uint32_t>(value).value_or(0);
            break;
        case NL80211_BSS_BEACON_INTERVAL:
            accessPoint.beaconPeriod = NumberIn<uint16_t>(value).value_or(0);
            break;
        case NL80211_BSS_CAPABILITY: {
            const uint32_t capability = NumberIn<uint16_t>(value).value_or(0);
            accessPoint.isAdHoc = (capability & kCapabilityIbss) != 0;
            accessPoint.hasPrivacy = (capability & kCapabilityPrivacy) != 0;
            break;
        }
        case NL80211_BSS_SIGNAL_MBM:
            if (const auto hundredths = NumberIn<int32_t>(value)) {
                accessPoint.signalDbm = *hundredths / 100;
            }
            break;
        case NL80211_BSS_SIGNAL_UNSPEC:
            if (!value.empty()) {
                accessPoint.signalDbm = SignalOfPercent(value[0]);
            }
            break;
        case NL80211_BSS_STATUS: {
            const uint32_t status = NumberIn<uint32_t>(value).value_or(NL80211_BSS_STATUS_AUTHENTICATED);
            accessPoint.isInUse = status != NL80211_BSS_STATUS_AUTHENTICATED;  // associated, or joined to others
            break;
        }
        case NL80211_BSS_INFORMATION_ELEMENTS:
            parts.elements = value;
            break;
        case NL80211_BSS_BEACON_IES:
            parts.beaconElements = value;
            break;
        default:
            break;
    }
}

}  // namespace

bool ParseInterface(Bytes attributes, WirelessInterface& interface) {
    WirelessInterface read;
    ForEachAttribute(attributes, [&](int type, Bytes value) {
        if (type == NL80211_ATTR_IFINDEX) {
            read.index = NumberIn<uint32_t>(value).value_or(0);
        } else if (type == NL80211_ATTR_IFNAME) {
            read.name.assign(value.begin(), std::find(value.begin(), value.end(), 0));
        } else if (type == NL80211_ATTR_IFTYPE) {
            const auto kind = NumberIn<uint32_t>(value);
            read.isStation = kind == NL80211_IFTYPE_STATION;
            read.isAdHoc = kind == NL80211_IFTYPE_ADHOC;
        }
    });
    if (read.index == 0 || read.name.empty()) {
        return false;  // a radio without a network interface, such as a peer-to-peer device
    }
    interface = std::move(read);
    return true;
}

bool ParseStation(Bytes attributes, Station& station) {
    Station read;
    bool hasAddress = false;
    ForEachAttribute(attributes, [&](int type, Bytes value) {
        if (type == NL80211_ATTR_MAC) {
            hasAddress = TakeMac(value, read.address);
        } else if (type == NL80211_ATTR_STA_INFO) {
            ApplyStationInfo(value, read);
        }
    });
    if (hasAddress) {
        station = read;
    }
    return hasAddress;
}

bool ParseAccessPoint(Bytes attributes, AccessPoint& accessPoint) {
    AccessPoint read;
    BssParts parts;
    ForEachAttribute(attributes, [&](int type, Bytes bss) {
        if (type == NL80211_ATTR_BSS) {
            ForEachAttribute(bss, [&](int part, Bytes value) { ApplyBssAttribute(part, value, parts, read); });
        }
    });
    if (!parts.hasBssid) {
        return false;
    }
    // Probe responses name a hidden network that beacons do not; the kernel keeps both.
    ApplyInformationElements(parts.elements.empty() ? parts.beaconElements : parts.elements, read);
    accessPoint = std::move(read);
    return true;
}

}  // namespace helper
