// Merges what the driver lists into the scanner's table. Every length comes from the air or the driver; none is
// trusted.

#include "wireless/access_points.h"

#include "item/item_state.h"
#include "wireless/channel.h"
#include "wireless/signal_level.h"

#include <algorithm>

namespace {

// NDIS_WLAN_BSSID, as far as it is read.
constexpr size_t kEntryBssid = 4;
constexpr size_t kEntrySsidLength = 12;
constexpr size_t kEntrySsid = 16;
constexpr size_t kEntryPrivacy = 48;
constexpr size_t kEntryRssi = 52;
constexpr size_t kEntryNetworkType = 56;
constexpr size_t kEntryFrequency = 72;
constexpr size_t kEntryMode = 92;
constexpr size_t kEntryRates = 96;
constexpr size_t kEntryBytes = kEntryRates + kRateBytes;

// From a value that is a length and then bytes; the text ends at its first zero byte.
void CopySsid(const uint8_t* length, const uint8_t* bytes, char (&ssid)[kSsidBytes + 1]) {
    const size_t count = std::min<size_t>(ReadNdisField(length), kSsidBytes);
    memcpy(ssid, bytes, count);
    ssid[count] = 0;
}

AccessPoint* FindByBssid(AccessPointTable& table, const uint8_t* bssid) {
    for (int i = 0; i < table.count; ++i) {
        if (memcmp(table.entries[i].bssid, bssid, kMacBytes) == 0) {
            return &table.entries[i];
        }
    }
    return nullptr;
}

void TakeEntry(AccessPointTable& table, const uint8_t* listed) {
    AccessPoint* entry = FindByBssid(table, listed + kEntryBssid);
    if (entry == nullptr) {
        if (table.count == kMostAccessPoints) {
            return;
        }
        entry = &table.entries[table.count++];
        CopySsid(listed + kEntrySsidLength, listed + kEntrySsid, entry->ssid);
        memcpy(entry->bssid, listed + kEntryBssid, kMacBytes);
    }
    entry->privacy = ReadNdisField(listed + kEntryPrivacy);
    entry->rssi = static_cast<int32_t>(ReadNdisField(listed + kEntryRssi));
    entry->networkType = ReadNdisField(listed + kEntryNetworkType);
    entry->channel = ChannelFromFrequency(ReadNdisField(listed + kEntryFrequency));
    entry->mode = ReadNdisField(listed + kEntryMode);
    memcpy(entry->rates, listed + kEntryRates, kRateBytes);
    entry->seen = true;
}

// The SSID counts only while the adapter is associated, which the BSSID tells.
void ReadAssociation(WirelessDevice& device, AccessPointTable& table, ScanOutcome& outcome) {
    char ssid[kSsidBytes + 1] = {};
    if (QueryOid(device, OID_802_11_SSID)) {
        CopySsid(device.Value(), device.Value() + sizeof(uint32_t), ssid);
    }
    if (QueryOid(device, OID_802_11_BSSID)) {
        outcome.bssidChanged = memcmp(table.shownBssid, device.Value(), kMacBytes) != 0;
        memcpy(table.shownBssid, device.Value(), kMacBytes);
    } else {
        ssid[0] = 0;
    }
    outcome.ssidChanged = strcmp(table.shownSsid, ssid) != 0;
    memcpy(table.shownSsid, ssid, sizeof(ssid));
}

}  // namespace

void ResetAccessPoints(AccessPointTable& table) {
    table = {};
    std::fill_n(table.shownBssid, kMacBytes, uint8_t{0xFF});
}

void MergeAccessPoints(AccessPointTable& table, std::span<const uint8_t> list) {
    if (list.size() < sizeof(uint32_t)) {
        return;
    }
    const uint32_t count = ReadNdisField(list.data());
    list = list.subspan(sizeof(uint32_t));
    for (uint32_t i = 0; i < count && list.size() >= kEntryBytes; ++i) {
        const uint32_t length = ReadNdisField(list.data());
        if (length == 0) {
            return;
        }
        TakeEntry(table, list.data());
        list = list.subspan(std::min<size_t>(length, list.size()));
    }
}

ScanOutcome ScanAccessPoints(AccessPointTable& table) {
    ScanOutcome outcome = {};
    WirelessDevice device;
    if (OpenWirelessDevice(device) != WirelessOpening::Open || !device.HasAdapter()) {
        return outcome;
    }
    outcome.usable = true;
    SetOid(device, OID_802_11_BSSID_LIST_SCAN);
    ReadAssociation(device, table, outcome);
    for (AccessPoint& entry : table.entries) {
        entry.seen = false;
    }
    if (QueryOid(device, OID_802_11_BSSID_LIST)) {
        MergeAccessPoints(table, {device.Value(), WirelessDevice::kValueBytes});
    }
    for (AccessPoint& entry : table.entries) {
        if (!entry.seen) {
            entry.rssi = kNoSignal;
        }
    }
    return outcome;
}

int SignalImage(const AccessPoint& entry) {
    return static_cast<int>(SignalLevelOf(entry.rssi)) * 2 + (entry.privacy != 0 ? 1 : 0);
}
