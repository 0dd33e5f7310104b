// tests/support/access_point_list.h - values of OID_802_11_BSSID_LIST and OID_802_11_SSID, bent ones, too.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

// The count and entries of 104 bytes, as the NDIS interface lays them out; of the BSSID the last byte tells access
// points apart.
class AccessPointListBuilder {
  public:
    AccessPointListBuilder& Add(const std::string& ssid, uint8_t bssid, int32_t rssi, uint32_t privacy = 0,
                                uint32_t frequency = 2437000) {
        const size_t entry = value_.size();
        value_.resize(entry + 104);
        value_[entry + 4] = 2;
        value_[entry + 9] = bssid;
        memcpy(&value_[entry + 16], ssid.data(), ssid.size());
        Put(entry + 48, privacy).Put(entry + 52, static_cast<uint32_t>(rssi)).Put(entry + 72, frequency);
        Put(entry + 56, 3).Put(entry + 64, 100).Put(entry + 92, 1).Put(entry + 96, 0x968B8482);
        Put(entry, 104).Put(entry + 12, static_cast<uint32_t>(ssid.size()));
        return ++value_[0], *this;
    }
    AccessPointListBuilder& WithCount(uint32_t count) { return Put(0, count); }
    AccessPointListBuilder& WithLength(size_t entry, uint32_t length) { return Put(4 + 104 * entry, length); }
    AccessPointListBuilder& WithSsidLength(uint32_t length) {
        return Put(value_.size() - 104 + 12, length);
    }  // the last
    const std::vector<uint8_t>& Value() const { return value_; }

  private:
    std::vector<uint8_t> value_ = {0, 0, 0, 0};
    AccessPointListBuilder& Put(size_t at, uint32_t number) {
        return memcpy(&value_[at], &number, sizeof(number)), *this;
    }
};

inline std::vector<uint8_t> SsidValue(const std::string& ssid, uint32_t length) {
    std::vector<uint8_t> value(sizeof(length) + 32);
    memcpy(value.data(), &length, sizeof(length));
    memcpy(value.data() + sizeof(length), ssid.data(), ssid.size());
    return value;
}
