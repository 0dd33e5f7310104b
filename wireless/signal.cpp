// An adapter that reports a strength without being associated counts in the history but not as the current signal.

#include "wireless/signal.h"

#include "item/item_state.h"
#include "wireless/ndis.h"

#include <algorithm>
#include <iterator>

namespace {

void PushReading(int32_t dbm) {
    auto& history = itemState.SignalHistory;
    std::copy(std::begin(history) + 1, std::end(history), std::begin(history));
    history[kSignalReadings - 1] = dbm;
}

int NoteAbsence() {
    PushReading(kNoSignal);
    if (itemState.WirelessSeen) {
        itemState.WirelessSeen = false;
        itemState.WirelessLostValue = itemState.WirelessSinceTick - static_cast<uint32_t>(GetTickCount());
    }
    return 0;
}

void NotePresence() {
    if (!itemState.WirelessSeen) {
        itemState.WirelessSeen = true;
        itemState.WirelessSinceTick = static_cast<uint32_t>(GetTickCount());
    }
}

}  // namespace

int QuerySignal() {
    itemState.SignalDbm = kNoSignal;
    WirelessDevice device;
    const WirelessOpening opening = OpenWirelessDevice(device);
    if (opening == WirelessOpening::NoMemory) {
        return 1;
    }
    if (opening == WirelessOpening::NoDevice || !device.HasAdapter()) {
        return NoteAbsence();
    }
    NotePresence();
    if (QueryOid(device, OID_802_11_RSSI)) {
        itemState.SignalDbm = static_cast<int32_t>(ReadNdisField(device.Value()));
    }
    PushReading(itemState.SignalDbm);
    if (!QueryOid(device, OID_802_11_BSSID)) {
        itemState.SignalDbm = kNoSignal;
    }
    return 1;
}
