// The strip's reading through the desktop's radio and a helper of every temper. Wine only: on Windows the radio is
// Native Wifi's.

#include <gtest/gtest.h>

#include "item/item_state.h"
#include "platform/desktop/wine.h"
#include "tests/unit/helper/scripted_helper.h"
#include "wireless/ndis.h"
#include "wireless/signal.h"

using helper_protocol::RequestKind;

namespace {

struct Asked {
    int bindings = 0;
    int values = 0;
};

// A radio that reads -61 dBm and is associated.
Answer RadioAnswer(Asked& asked) {
    return [&asked](const MessageHeader& header, const Bytes& body) {
        Bytes message(200);
        helper_protocol::Request request;
        DecodeRequest(header.kind, body, request);
        if (request.kind == RequestKind::kRadioBinding) {
            ++asked.bindings;
            message.resize(EncodeBindingAnswer(message, header, "wlan0", "driver"));
        } else {
            ++asked.values;
            const Bytes rssi = {0xC3, 0xFF, 0xFF, 0xFF};
            const Bytes bssid = {2, 0, 0, 0, 0, 1};
            message.resize(EncodeValueAnswer(message, header, request.oid == OID_802_11_RSSI ? rssi : bssid));
        }
        return message;
    };
}

Bytes NothingThere(const MessageHeader& header) {
    Bytes message(100);
    message.resize(EncodeResult(message, header, helper_protocol::kResultGeneralFailure));
    return message;
}

class HelperRadio : public testing::Test {
  protected:
    void SetUp() override {
        if (!platform::IsWine()) {
            GTEST_SKIP() << "Native Wifi is asked here";
        }
        ResetItemState();
    }
};

TEST_F(HelperRadio, A_tick_asks_for_each_value_once_and_for_the_adapter_now_and_then) {
    bool present = false;
    Asked asked;
    Server server([&](const MessageHeader& header, const Bytes& body) {
        return present ? RadioAnswer(asked)(header, body) : NothingThere(header);
    });
    EXPECT_EQ(QuerySignal(), 0);
    present = true;
    for (int tick = 1; tick <= 3; ++tick) {
        EXPECT_EQ(QuerySignal(), 1) << "one that comes is seen at once";
        EXPECT_EQ(itemState.SignalDbm, -61);
        EXPECT_EQ(asked.values, 2 * tick);
        EXPECT_EQ(asked.bindings, 1);
    }
    EXPECT_EQ(server.connections, 1);
    present = false;
    QuerySignal();
    EXPECT_EQ(itemState.SignalDbm, kNoSignal);
    Sleep(platform::kRadioBindingMs + 50);
    EXPECT_EQ(QuerySignal(), 0) << "one that is gone is not remembered for longer";
}

}  // namespace
