// A list is its count and then the entries, which drivers may leave unaligned and of any length.

#include "tests/support/access_point_list.h"

#include <cstring>

static_assert(sizeof(ListedAccessPoint) == 104);

AccessPointListBuilder& AccessPointListBuilder::Add(const std::string& ssid, uint8_t bssid, int32_t rssi,
                                                    uint32_t privacy, uint32_t frequency) {
    ListedAccessPoint entry;
    entry.bssid[5] = bssid;
    entry.ssidLength = static_cast<uint32_t>(ssid.size());
    ssid.copy(entry.ssid, sizeof(entry.ssid));
    entry.privacy = privacy;
    entry.rssi = rssi;
    entry.frequency = frequency;
    entries_.push_back(entry);
    ++count_;
    return *this;
}

AccessPointListBuilder& AccessPointListBuilder::WithCount(uint32_t count) {
    count_ = count;
    return *this;
}

AccessPointListBuilder& AccessPointListBuilder::WithLength(size_t entry, uint32_t length) {
    entries_[entry].length = length;
    return *this;
}

AccessPointListBuilder& AccessPointListBuilder::WithSsidLength(uint32_t length) {
    entries_.back().ssidLength = length;
    return *this;
}

std::vector<uint8_t> AccessPointListBuilder::Value() const {
    std::vector<uint8_t> value(sizeof(count_) + entries_.size() * sizeof(ListedAccessPoint));
    memcpy(value.data(), &count_, sizeof(count_));
    memcpy(value.data() + sizeof(count_), entries_.data(), value.size() - sizeof(count_));
    return value;
}

std::vector<uint8_t> SsidValue(const std::string& ssid, uint32_t length) {
    std::vector<uint8_t> value(sizeof(length) + 32);
    memcpy(value.data(), &length, sizeof(length));
    memcpy(value.data() + sizeof(length), ssid.data(), std::min<size_t>(ssid.size(), 32));
    return value;
}
