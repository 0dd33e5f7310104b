// tests/support/access_point_list.h - values of OID_802_11_BSSID_LIST and OID_802_11_SSID, well-formed or bent on
// purpose.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

// As the NDIS interface lays it out; of the BSSID the last byte tells access points apart.
struct ListedAccessPoint {
    uint32_t length = 104;
    uint8_t bssid[8] = {2};
    uint32_t ssidLength = 0;
    char ssid[32] = {};
    uint32_t privacy = 0;
    int32_t rssi = 0;
    uint32_t networkType = 3, configurationLength = 0, beacon = 100, atimWindow = 0, frequency = 0, hopping[4] = {};
    uint32_t mode = 1;
    uint8_t rates[8] = {0x82, 0x84, 0x8B, 0x96};
};
static_assert(sizeof(ListedAccessPoint) == 104);

class AccessPointListBuilder {
  public:
    AccessPointListBuilder& Add(const std::string& ssid, uint8_t bssid, int32_t rssi, uint32_t privacy = 0,
                                uint32_t frequency = 2437000) {
        ListedAccessPoint entry = {
            .ssidLength = static_cast<uint32_t>(ssid.size()), .privacy = privacy, .rssi = rssi, .frequency = frequency};
        entry.bssid[5] = bssid;
        ssid.copy(entry.ssid, sizeof(entry.ssid));
        entries_.push_back(entry);
        ++count_;
        return *this;
    }
    AccessPointListBuilder& WithCount(uint32_t count) { return count_ = count, *this; }
    AccessPointListBuilder& WithLength(size_t entry, uint32_t length) { return entries_[entry].length = length, *this; }
    // Of the last entry.
    AccessPointListBuilder& WithSsidLength(uint32_t length) { return entries_.back().ssidLength = length, *this; }

    std::vector<uint8_t> Value() const {
        std::vector<uint8_t> value(sizeof(count_) + entries_.size() * sizeof(ListedAccessPoint));
        memcpy(value.data(), &count_, sizeof(count_));
        memcpy(value.data() + sizeof(count_), entries_.data(), value.size() - sizeof(count_));
        return value;
    }

  private:
    std::vector<ListedAccessPoint> entries_;
    uint32_t count_ = 0;
};

inline std::vector<uint8_t> SsidValue(const std::string& ssid, uint32_t length) {
    std::vector<uint8_t> value(sizeof(length) + 32);
    memcpy(value.data(), &length, sizeof(length));
    memcpy(value.data() + sizeof(length), ssid.data(), ssid.size());
    return value;
}
