// Lays Native Wifi's facts out as a handheld's wireless driver would.

#include "platform/desktop/native_wifi_records.h"

#include <algorithm>

namespace platform {
namespace {

constexpr size_t kRateBytes = 8;

void PutNumber(std::span<uint8_t> record, size_t offset, uint32_t number) {
    memcpy(record.data() + offset, &number, sizeof(number));
}

void PutSsid(std::span<uint8_t> record, size_t offset, const DOT11_SSID& ssid) {
    const ULONG length = std::min<ULONG>(ssid.uSSIDLength, DOT11_SSID_MAX_LENGTH);
    PutNumber(record, offset, length);
    memcpy(record.data() + offset + sizeof(uint32_t), ssid.ucSSID, length);
}

void PutConfiguration(std::span<uint8_t> record, size_t offset, const WLAN_BSS_ENTRY& entry) {
    PutNumber(record, offset, kConfigurationBytes);
    PutNumber(record, offset + 4, entry.usBeaconPeriod);
    PutNumber(record, offset + 12, entry.ulChCenterFrequency);
}

// A rate is in units of 500 kbit/s with the basic bit on top, 16 bits wide there and 8 here.
void PutRates(std::span<uint8_t> record, size_t offset, const WLAN_RATE_SET& rates) {
    constexpr USHORT kBasicBit = 0x8000;
    const size_t count = std::min<size_t>(rates.uRateSetLength / sizeof(USHORT), kRateBytes);
    for (size_t i = 0; i < count; ++i) {
        const USHORT rate = rates.usRateSet[i];
        record[offset + i] = static_cast<uint8_t>((rate & 0x7F) | ((rate & kBasicBit) != 0 ? 0x80 : 0));
    }
}

// Offsets of NDIS_WLAN_BSSID.
void PutEntry(std::span<uint8_t> record, const WLAN_BSS_ENTRY& entry) {
    constexpr USHORT kPrivacyCapability = 0x10;  // IEEE 802.11, capability information
    PutNumber(record, 0, kBssidEntryBytes);
    memcpy(record.data() + 4, entry.dot11Bssid, sizeof(entry.dot11Bssid));
    PutSsid(record, 12, entry.dot11Ssid);
    PutNumber(record, 48, (entry.usCapabilityInformation & kPrivacyCapability) != 0 ? 1 : 0);
    PutNumber(record, 52, static_cast<uint32_t>(entry.lRssi));
    PutNumber(record, 56, NdisNetworkType(entry.dot11BssPhyType, entry.ulChCenterFrequency));
    PutConfiguration(record, 60, entry);
    PutNumber(record, 92, NdisInfrastructureMode(entry.dot11BssType));
    PutRates(record, 96, entry.wlanRateSet);
}

// How many entries are ahead of this one when the strongest come first and equal ones keep their order.
size_t Rank(std::span<const WLAN_BSS_ENTRY> entries, size_t place) {
    size_t ahead = 0;
    for (size_t i = 0; i < entries.size(); ++i) {
        if (entries[i].lRssi > entries[place].lRssi || (entries[i].lRssi == entries[place].lRssi && i < place)) {
            ++ahead;
        }
    }
    return ahead;
}

}  // namespace

uint32_t NdisNetworkType(DOT11_PHY_TYPE type, ULONG frequencyKhz) {
    constexpr ULONG kFirstBeyondTwoPointFourGhz = 2500000;
    switch (type) {
        case dot11_phy_type_fhss:
            return 0;
        case dot11_phy_type_dsss:
        case dot11_phy_type_hrdsss:
            return 1;
        default:
            return frequencyKhz >= kFirstBeyondTwoPointFourGhz ? 2 : 3;
    }
}

uint32_t NdisInfrastructureMode(DOT11_BSS_TYPE type) {
    return type == dot11_BSS_type_independent ? 0 : type == dot11_BSS_type_infrastructure ? 1 : 2;
}

uint32_t NdisAuthenticationMode(DOT11_AUTH_ALGORITHM algorithm) {
    // Open, shared, (auto-switch,) WPA, WPA-PSK, WPA-None, WPA2, WPA2-PSK.
    switch (algorithm) {
        case DOT11_AUTH_ALGO_80211_OPEN:
            return 0;
        case DOT11_AUTH_ALGO_80211_SHARED_KEY:
            return 1;
        case DOT11_AUTH_ALGO_WPA:
            return 3;
        case DOT11_AUTH_ALGO_WPA_PSK:
            return 4;
        case DOT11_AUTH_ALGO_WPA_NONE:
            return 5;
        case DOT11_AUTH_ALGO_RSNA:
            return 6;
        default:
            return 7;
    }
}

uint32_t NdisWepStatus(DOT11_CIPHER_ALGORITHM cipher) {
    switch (cipher) {
        case DOT11_CIPHER_ALGO_NONE:
            return 1;
        case DOT11_CIPHER_ALGO_WEP40:
        case DOT11_CIPHER_ALGO_WEP104:
        case DOT11_CIPHER_ALGO_WEP:
            return 0;
        case DOT11_CIPHER_ALGO_TKIP:
            return 4;  // Ndis802_11Encryption2Enabled
        default:
            return 6;  // Ndis802_11Encryption3Enabled: CCMP and what came after it
    }
}

size_t WriteNdisNumber(uint32_t number, std::span<uint8_t> value) {
    PutNumber(value, 0, number);
    return sizeof(number);
}

size_t WriteNdisSsid(const DOT11_SSID& ssid, std::span<uint8_t> value) {
    constexpr size_t kBytes = sizeof(uint32_t) + DOT11_SSID_MAX_LENGTH;
    memset(value.data(), 0, kBytes);
    PutSsid(value, 0, ssid);
    return kBytes;
}

size_t WriteNdisConfiguration(const WLAN_BSS_ENTRY& entry, std::span<uint8_t> value) {
    memset(value.data(), 0, kConfigurationBytes);
    PutConfiguration(value, 0, entry);
    return kConfigurationBytes;
}

size_t WriteNdisBssidList(std::span<const WLAN_BSS_ENTRY> entries, std::span<uint8_t> value) {
    const size_t room = (value.size() - sizeof(uint32_t)) / kBssidEntryBytes;
    size_t used = sizeof(uint32_t);
    uint32_t count = 0;
    for (size_t i = 0; i < entries.size(); ++i) {
        if (Rank(entries, i) < room) {
            const std::span<uint8_t> record = value.subspan(used, kBssidEntryBytes);
            std::fill(record.begin(), record.end(), uint8_t{0});
            PutEntry(record, entries[i]);
            used += kBssidEntryBytes;
            ++count;
        }
    }
    PutNumber(value, 0, count);
    return used;
}

}  // namespace platform
