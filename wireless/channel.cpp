// Both scales are accepted exactly on a channel's centre and nowhere else.

#include "wireless/channel.h"

namespace {

int32_t ChannelOnScale(uint32_t frequency, uint32_t first, uint32_t step) {
    constexpr uint32_t kChannels = 14;
    if (frequency < first || (frequency - first) % step != 0) {
        return -1;
    }
    const uint32_t index = (frequency - first) / step;
    return index < kChannels ? static_cast<int32_t>(index) + 1 : -1;
}

}  // namespace

int32_t ChannelFromFrequency(uint32_t frequency) {
    const int32_t channel = ChannelOnScale(frequency, 2412000, 5000);
    return channel != -1 ? channel : ChannelOnScale(frequency, 24120, 50);
}
