// wireless/signal_level.h - the five levels that a reading in dBm is shown as.
#pragma once

#include <cstdint>

enum class SignalLevel { None, VeryLow, Low, Good, VeryGood };
inline constexpr int kSignalLevels = 5;

// None at -90 dBm and below, very low to -81, low to -71, good to -67, very good from -66.
constexpr SignalLevel SignalLevelOf(int32_t dbm) {
    if (dbm <= -90) {
        return SignalLevel::None;
    }
    if (dbm <= -81) {
        return SignalLevel::VeryLow;
    }
    if (dbm <= -71) {
        return SignalLevel::Low;
    }
    return dbm <= -67 ? SignalLevel::Good : SignalLevel::VeryGood;
}
