// Hosts and the time base of the demonstration.

#include "platform/demo/network.h"

namespace platform::demo {
namespace {

constexpr Host kHosts[] = {
    {1, {0x02, 0x1B, 0x4C, 0x00, 0x00, 0x01}, true, 1},   {5, {0x02, 0x1B, 0x4C, 0x13, 0x07, 0x2A}, true, 2},
    {12, {0x02, 0x60, 0x08, 0x4E, 0x91, 0x10}, true, 3},  {23, {0x02, 0x60, 0x08, 0x77, 0x02, 0xB4}, true, 2},
    {31, {0x02, 0x0A, 0x95, 0x2F, 0x18, 0xC6}, true, 7},  {40, {0x02, 0x0A, 0x95, 0x61, 0xD3, 0x05}, true, 4},
    {57, {0x02, 0xC0, 0x4F, 0x0B, 0x5E, 0x88}, false, 1}, {101, {0x02, 0xC0, 0x4F, 0x31, 0x6D, 0x19}, true, 12},
    {118, {0x02, 0x50, 0xBA, 0x9C, 0x40, 0xE7}, true, 5}, {144, {0x02, 0x50, 0xBA, 0x03, 0xF8, 0x6C}, true, 9},
    {167, {0x02, 0x50, 0xBA, 0xD7, 0x2B, 0x31}, true, 2}, {200, {0x02, 0x90, 0x27, 0x15, 0x8A, 0x42}, true, 18},
    {254, {0x02, 0x90, 0x27, 0xFE, 0x00, 0x99}, true, 3},
};

constexpr uint32_t kNetwork = 0x7F070700;  // 127.7.7.0

// Taken when the library is loaded.
const DWORD start = GetTickCount();

}  // namespace

std::span<const Host> Hosts() {
    return kHosts;
}

uint32_t AddressOf(const Host& host) {
    return htonl(kNetwork + host.number);
}

bool IsOnNetwork(uint32_t address) {
    return (ntohl(address) & 0xFFFFFF00) == kNetwork;
}

DWORD Elapsed() {
    return GetTickCount() - start;
}

int Swing(int low, int high, DWORD periodMs, DWORD phaseMs) {
    const auto half = static_cast<int>(periodMs / 2);
    const auto place = static_cast<int>((Elapsed() + phaseMs) % periodMs);
    const int climbed = place < half ? place : 2 * half - place;
    return low + (high - low) * climbed / half;
}

}  // namespace platform::demo
