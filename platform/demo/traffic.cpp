// A minute of somebody's mail, pages, a download and an upload, over and over.

#include "platform/demo/traffic.h"

#include <iterator>

namespace platform::demo {
namespace {

constexpr uint32_t kKilobyte = 1024;
constexpr DWORD kSlotMs = 2000;

// Kilobytes of every two seconds.
constexpr uint16_t kReceived[] = {4,   2,  38, 96, 61, 12, 3,  0,  7,  142, 310, 388, 402, 371, 295,
                                  188, 64, 9,  2,  0,  1,  44, 87, 53, 18,  6,   3,   5,   2,   1};
constexpr uint16_t kTransmitted[] = {1,  1, 9, 21, 14, 4,   1,   0,  2,  11, 19, 22, 24, 20, 17,
                                     12, 5, 2, 31, 96, 148, 133, 71, 22, 6,  2,  1,  2,  1,  0};
constexpr size_t kSlots = std::size(kReceived);
static_assert(std::size(kTransmitted) == kSlots);

uint32_t Count(const uint16_t (&kilobytes)[kSlots], DWORD elapsedMs) {
    const DWORD slots = elapsedMs / kSlotMs;
    uint32_t minute = 0;
    uint32_t begun = 0;
    for (size_t i = 0; i < kSlots; ++i) {
        minute += kilobytes[i];
        begun += i < slots % kSlots ? kilobytes[i] : 0;
    }
    const uint32_t current = kilobytes[slots % kSlots] * kKilobyte / kSlotMs * (elapsedMs % kSlotMs);
    return (slots / static_cast<uint32_t>(kSlots) * minute + begun) * kKilobyte + current;
}

}  // namespace

Octets CountOctets(DWORD elapsedMs) {
    constexpr Octets kBefore = {73400320, 9437184};
    return {kBefore.received + Count(kReceived, elapsedMs), kBefore.transmitted + Count(kTransmitted, elapsedMs)};
}

}  // namespace platform::demo
