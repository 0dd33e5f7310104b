// What a wireless driver may answer when it is asked for its binding and for the values that the tools show: the first
// byte parts the input into the two.

#include "item/item_state.h"
#include "tests/fuzz/fuzzer.h"
#include "tests/support/wireless_values.h"
#include "wireless/access_points.h"
#include "wireless/card_details.h"
#include "wireless/signal.h"

namespace {

void AskDriver(std::span<const uint8_t> input) {
    const size_t bindingBytes = input.empty() ? 0 : input[0];
    Take(input, 1);
    const auto binding = Take(input, bindingBytes);
    UseWireless();
    auto& wireless = scripted::system.wireless;
    wireless.requests.clear();
    wireless.bindingAnswer = {binding.begin(), binding.end()};
    for (const uint32_t oid :
         {OID_802_11_BSSID, OID_802_11_SSID, OID_802_11_INFRASTRUCTURE_MODE, OID_802_11_AUTHENTICATION_MODE,
          OID_802_11_WEP_STATUS, OID_802_11_NETWORK_TYPE_IN_USE, OID_802_11_RSSI, OID_802_11_CONFIGURATION}) {
        wireless.values[oid] = {input.begin(), input.end()};
    }
    CardDetails details;
    const bool isThere = ReadCardDetails(details);
    AccessPointTable table;
    ResetAccessPoints(table);
    Demand(ScanAccessPoints(table).usable == isThere && table.count == 0);
    Demand(strnlen(table.shownSsid, sizeof(table.shownSsid)) < sizeof(table.shownSsid));
    Demand(QuerySignal() == (isThere ? 1 : 0) && (isThere || itemState.SignalDbm == kNoSignal));
}

std::vector<Bytes> Answers() {
    // A binding whose name stands behind the record's five fields, then a configuration.
    Bytes sound = {26, 0, 0, 0, 0, 20, 0, 0, 0, 6, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 'a', 0, 'b', 0, 'c', 0};
    const Bytes configuration = NdisFields({32, 100, 0, 2437000});
    sound.insert(sound.end(), configuration.begin(), configuration.end());
    Bytes beyond = sound;
    beyond[6] = beyond[10] = 0xFF;  // offset and length
    return {sound, beyond};
}

const RegisteredFuzzer kFuzzer(
    {"card_values", {"wireless/ndis.cpp", "wireless/card_details.cpp", "wireless/signal.cpp"}, AskDriver, Answers});

}  // namespace
