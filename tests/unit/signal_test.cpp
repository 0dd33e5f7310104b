// The wireless query layer and the reading of every tick.

#include "wireless/signal.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "tests/fakes/scripted_platform.h"
#include "wireless/channel.h"
#include "wireless/ndis.h"

namespace {

std::vector<uint8_t> Number(int32_t value) {
    std::vector<uint8_t> bytes(4);
    memcpy(bytes.data(), &value, sizeof(value));
    return bytes;
}

void UseWireless(int32_t rssi, bool associated) {
    scripted::Wireless& wireless = scripted::system.wireless;
    wireless.present = true;
    wireless.bindingName = L"WLAN1";
    wireless.values[OID_802_11_RSSI] = Number(rssi);
    wireless.values.erase(OID_802_11_BSSID);
    if (associated) {
        wireless.values[OID_802_11_BSSID] = {1, 2, 3, 4, 5, 6};
    }
}

int32_t NewestReading() {
    return itemState.SignalHistory[kSignalReadings - 1];
}

TEST(QuerySignal, Reading_history_and_result) {
    UseWireless(-61, true);
    EXPECT_EQ(QuerySignal(), 1);
    EXPECT_EQ(scripted::system.wireless.requests, (std::vector<uint32_t>{OID_802_11_RSSI, OID_802_11_BSSID}));
    EXPECT_EQ(itemState.SignalDbm, -61);
    EXPECT_EQ(NewestReading(), -61);

    UseWireless(-70, false);
    EXPECT_EQ(QuerySignal(), 1);
    EXPECT_EQ(itemState.SignalDbm, kNoSignal);
    EXPECT_EQ(NewestReading(), -70);
    EXPECT_EQ(itemState.SignalHistory[kSignalReadings - 2], -61);

    scripted::system.wireless.values.erase(OID_802_11_RSSI);
    EXPECT_EQ(QuerySignal(), 1);
    EXPECT_EQ(NewestReading(), kNoSignal);

    scripted::system.wireless.bindingName = L"";
    EXPECT_EQ(QuerySignal(), 0);
    scripted::system.wireless.present = false;
    EXPECT_EQ(QuerySignal(), 0);
    EXPECT_EQ(itemState.SignalHistory[kSignalReadings - 5], -61);
}

TEST(QuerySignal, Forty_readings_without_wireless_forget_everything) {
    UseWireless(-50, true);
    QuerySignal();
    scripted::system.wireless.present = false;
    for (int i = 0; i < kSignalReadings; ++i) {
        QuerySignal();
    }
    for (const int32_t reading : itemState.SignalHistory) {
        EXPECT_EQ(reading, kNoSignal);
    }
}

TEST(QuerySignal, Presence_is_remembered_until_the_adapter_is_lost) {
    UseWireless(-50, true);
    QuerySignal();
    EXPECT_TRUE(itemState.WirelessSeen);
    const uint32_t since = itemState.WirelessSinceTick;
    QuerySignal();
    EXPECT_EQ(itemState.WirelessSinceTick, since);
    EXPECT_EQ(itemState.WirelessLostValue, 0xFFFFFFFFU);
    scripted::system.wireless.present = false;
    QuerySignal();
    EXPECT_FALSE(itemState.WirelessSeen);
    EXPECT_LE(since - itemState.WirelessLostValue - since, 60000U);
}

TEST(QuerySignal, A_binding_name_longer_than_its_room_is_cut) {
    UseWireless(-50, true);
    scripted::system.wireless.bindingName = std::wstring(400, L'n');
    WirelessDevice device;
    ASSERT_EQ(OpenWirelessDevice(device), WirelessOpening::Open);
    EXPECT_EQ(wcslen(device.name), kBindingNameUnits - 1);
}

TEST(Channel, Both_scales_and_nothing_between) {
    for (int32_t channel = 1; channel <= 14; ++channel) {
        const auto step = static_cast<uint32_t>(channel - 1);
        EXPECT_EQ(ChannelFromFrequency(2412000 + step * 5000), channel);
        EXPECT_EQ(ChannelFromFrequency(24120 + step * 50), channel);
        EXPECT_EQ(ChannelFromFrequency(2412001 + step * 5000), -1);
    }
    for (const uint32_t other : {0U, 2407000U, 2482000U, 2484000U, 24820U, 24070U, 2437U, 5180000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(ChannelFromFrequency(other), -1) << other;
    }
}

}  // namespace
