// Entries are laid out as the NDIS interface gives them: an unaligned list of records of varying length.

#include "tests/support/access_point_list.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace {

constexpr size_t kEntryBytes = 104;

void Put(std::vector<uint8_t>& value, size_t offset, uint32_t number) {
    memcpy(&value[offset], &number, sizeof(number));
}

}  // namespace

AccessPointListBuilder& AccessPointListBuilder::Add(const std::string& ssid, uint8_t bssid, int32_t rssi,
                                                    uint32_t privacy, uint32_t frequency) {
    const size_t entry = value_.size();
    value_.resize(entry + kEntryBytes);
    Put(value_, entry, kEntryBytes);
    value_[entry + 4] = 0x02;
    value_[entry + 9] = bssid;
    Put(value_, entry + 12, static_cast<uint32_t>(ssid.size()));
    std::copy_n(ssid.begin(), std::min<size_t>(ssid.size(), 32),
                value_.begin() + static_cast<std::ptrdiff_t>(entry) + 16);
    Put(value_, entry + 48, privacy);
    Put(value_, entry + 52, static_cast<uint32_t>(rssi));
    Put(value_, entry + 56, 3);
    Put(value_, entry + 64, 100);
    Put(value_, entry + 72, frequency);
    Put(value_, entry + 92, 1);
    constexpr uint8_t kRates[] = {0x82, 0x84, 0x8B, 0x96};
    std::copy(std::begin(kRates), std::end(kRates), value_.begin() + static_cast<std::ptrdiff_t>(entry) + 96);
    return WithCount(static_cast<uint32_t>((value_.size() - 4) / kEntryBytes));
}

AccessPointListBuilder& AccessPointListBuilder::WithCount(uint32_t count) {
    Put(value_, 0, count);
    return *this;
}

AccessPointListBuilder& AccessPointListBuilder::WithLength(size_t entry, uint32_t length) {
    Put(value_, 4 + entry * kEntryBytes, length);
    return *this;
}

AccessPointListBuilder& AccessPointListBuilder::WithSsidLength(uint32_t length) {
    Put(value_, value_.size() - kEntryBytes + 12, length);
    return *this;
}

std::vector<uint8_t> SsidValue(const std::string& ssid, uint32_t length) {
    std::vector<uint8_t> value(4 + 32);
    Put(value, 0, length);
    std::copy_n(ssid.begin(), std::min<size_t>(ssid.size(), 32), value.begin() + 4);
    return value;
}
