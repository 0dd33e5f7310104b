// wlanapi.h of the native build: what the product reads of Native Wifi. Any number may stand in its enumerations.
#pragma once

#include "windows.h"

#define DOT11_SSID_MAX_LENGTH 32
struct DOT11_SSID {
    ULONG uSSIDLength;
    uint8_t ucSSID[DOT11_SSID_MAX_LENGTH];
};

using DOT11_BSS_TYPE = int;
using DOT11_PHY_TYPE = int;
using DOT11_AUTH_ALGORITHM = int;
using DOT11_CIPHER_ALGORITHM = int;
inline constexpr int dot11_BSS_type_infrastructure = 1, dot11_BSS_type_independent = 2, dot11_phy_type_fhss = 1,
                     dot11_phy_type_dsss = 2, dot11_phy_type_hrdsss = 5, DOT11_AUTH_ALGO_80211_OPEN = 1,
                     DOT11_AUTH_ALGO_80211_SHARED_KEY = 2, DOT11_AUTH_ALGO_WPA = 3, DOT11_AUTH_ALGO_WPA_PSK = 4,
                     DOT11_AUTH_ALGO_WPA_NONE = 5, DOT11_AUTH_ALGO_RSNA = 6, DOT11_CIPHER_ALGO_NONE = 0,
                     DOT11_CIPHER_ALGO_WEP40 = 1, DOT11_CIPHER_ALGO_TKIP = 2, DOT11_CIPHER_ALGO_WEP104 = 5,
                     DOT11_CIPHER_ALGO_WEP = 0x101;

struct WLAN_RATE_SET {
    ULONG uRateSetLength;
    USHORT usRateSet[126];
};
struct WLAN_BSS_ENTRY {
    DOT11_SSID dot11Ssid;
    uint8_t dot11Bssid[6];
    DOT11_BSS_TYPE dot11BssType;
    DOT11_PHY_TYPE dot11BssPhyType;
    LONG lRssi;
    USHORT usBeaconPeriod, usCapabilityInformation;
    ULONG ulChCenterFrequency;
    WLAN_RATE_SET wlanRateSet;
};
