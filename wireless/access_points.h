// wireless/access_points.h - the access points that the scanner has met while it is open.
#pragma once

#include "platform/system.h"
#include "wireless/ndis.h"

#include <span>

inline constexpr int kMostAccessPoints = 48;
inline constexpr size_t kSsidBytes = 32;
inline constexpr size_t kRateBytes = 8;

struct AccessPoint {
    char ssid[kSsidBytes + 1];
    uint8_t bssid[kMacBytes];
    int32_t channel;   // -1 when unknown
    uint32_t privacy;  // 0 open, otherwise encrypted
    int32_t rssi;      // dBm; kNoSignal when missing from the latest list
    uint32_t networkType;
    uint32_t mode;
    uint8_t rates[kRateBytes];  // units of 500 kbit/s with the basic-rate bit; 0 ends
    bool seen;                  // in the latest list
};

// An entry's index is its row in the list. Entries are only ever appended; those beyond the capacity are ignored.
struct AccessPointTable {
    AccessPoint entries[kMostAccessPoints];
    int count;
    char shownSsid[kSsidBytes + 1];
    uint8_t shownBssid[kMacBytes];
};

void ResetAccessPoints(AccessPointTable& table);

// Takes the value of OID_802_11_BSSID_LIST (a count, then entries that carry their own length): updates known access
// points by BSSID and appends new ones. A list that is cut, or an entry that would not move forward, ends the walk
// there.
void MergeAccessPoints(AccessPointTable& table, std::span<const uint8_t> list);

struct ScanOutcome {
    bool usable;  // the device opened and has an adapter
    bool ssidChanged;
    bool bssidChanged;
};

// One scan-and-read cycle: asks for a new scan and reads what the previous one found. Entries missing from the list get
// kNoSignal. Without a usable device nothing changes.
ScanOutcome ScanAccessPoints(AccessPointTable& table);

// Image in the scanner's image list: two per signal level, open before encrypted.
int SignalImage(const AccessPoint& entry);
