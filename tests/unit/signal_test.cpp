// The wireless query layer and the reading of every tick.
#include "wireless/signal.h"

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "tests/support/wireless_values.h"
#include "wireless/channel.h"
#include "wireless/ndis.h"

namespace {

void UseSignal(int32_t rssi) {
    UseWireless();
    scripted::system.wireless.values = {{OID_802_11_RSSI, NdisFields({static_cast<uint32_t>(rssi)})},
                                        {OID_802_11_BSSID, {1, 2, 3, 4, 5, 6}}};
}

TEST(QuerySignal, Reading_history_and_result) {
    auto& wireless = scripted::system.wireless;
    // What is returned, the signal and the newest reading.
    const auto query = [] {
        const int result = QuerySignal();
        return std::tuple(result, itemState.SignalDbm, itemState.SignalHistory[kSignalReadings - 1]);
    };
    UseSignal(-61);
    EXPECT_EQ(query(), std::tuple(1, -61, -61));
    EXPECT_EQ(wireless.requests, (std::vector<uint32_t>{OID_802_11_RSSI, OID_802_11_BSSID}));
    wireless.values.erase(OID_802_11_BSSID);
    EXPECT_EQ(query(), std::tuple(1, kNoSignal, -61));
    wireless.values.clear();
    EXPECT_EQ(query(), std::tuple(1, kNoSignal, kNoSignal));
    wireless.bindingName.clear();
    EXPECT_EQ(query(), std::tuple(0, kNoSignal, kNoSignal));
    wireless.present = false;
    for (int i = 4; i < kSignalReadings; ++i) {
        QuerySignal();
    }
    EXPECT_EQ(itemState.SignalHistory[0], -61) << "the oldest of forty";
}

TEST(QuerySignal, Presence_is_remembered_until_the_adapter_is_lost) {
    UseSignal(-50);
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
    UseWireless();
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
    for (const uint32_t other : {0U, 2407000U, 2482000U, 24820U, 24070U, 2437U, 5180000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(ChannelFromFrequency(other), -1) << other;
    }
}

}  // namespace
