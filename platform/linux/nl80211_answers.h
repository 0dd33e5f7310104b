// platform/linux/nl80211_answers.h - the kernel's answers about wireless interfaces as plain records.
//
// Pure functions over the netlink attributes of one message (what follows the generic netlink header), as
// linux/nl80211.h lays them out. Attributes that are cut off or too short count as absent. False when the message does
// not tell what the record is about; the record is left alone then.

#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace helper {

using MacAddress = std::array<uint8_t, 6>;

inline constexpr size_t kMaxSsidBytes = 32;
inline constexpr int32_t kNoSignalDbm = -200;

struct WirelessInterface {
    uint32_t index = 0;
    std::string name;
    bool isStation = false;  // a client of access points
    bool isAdHoc = false;
};

struct Station {
    MacAddress address{};
    std::optional<int32_t> signalDbm;
};

enum class Security { kOpen, kWep, kWpa, kWpaPsk, kWpa2, kWpa2Psk };

struct AccessPoint {
    MacAddress bssid{};
    uint32_t frequencyMhz = 0;
    uint32_t beaconPeriod = 0;  // Kµs, 1,024 microseconds each
    uint32_t atimWindow = 0;    // Kµs; ad hoc networks only
    int32_t signalDbm = kNoSignalDbm;
    bool isAdHoc = false;
    bool hasPrivacy = false;
    bool isInUse = false;  // this machine is associated with it, or has joined it
    bool usesAes = false;  // WPA and WPA2: the pairwise cipher
    Security security = Security::kOpen;
    std::string ssid;            // at most kMaxSsidBytes of any value; empty when hidden
    std::vector<uint8_t> rates;  // units of 500 kbit/s, basic ones with the highest bit set
};

bool ParseInterface(std::span<const uint8_t> attributes, WirelessInterface& interface);
bool ParseStation(std::span<const uint8_t> attributes, Station& station);
bool ParseAccessPoint(std::span<const uint8_t> attributes, AccessPoint& accessPoint);

}  // namespace helper
