// platform/demo/network.h - the network that the demonstration plays: made-up hosts in the loopback range, so that what
// the product asks them over real sockets (the detector's name queries) never leaves the machine.
#pragma once

#include "platform/system.h"

#include <span>

namespace platform::demo {

inline constexpr char kOwnAddress[] = "127.7.7.20";
inline constexpr char kGateway[] = "127.7.7.1";
inline constexpr char kMask[] = "255.255.255.0";

struct Host {
    uint8_t number;  // last byte of its address
    uint8_t hardwareAddress[6];
    bool answersEcho;  // otherwise it is only known by its hardware address
    uint16_t roundTripMs;
};

std::span<const Host> Hosts();

// Network byte order.
uint32_t AddressOf(const Host& host);
bool IsOnNetwork(uint32_t address);

// Milliseconds since the demonstration began.
DWORD Elapsed();

// A value that rises from `low` to `high` and falls back once in every period.
int Swing(int low, int high, DWORD periodMs, DWORD phaseMs);

}  // namespace platform::demo
