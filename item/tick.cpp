// The tick runs on the item window's timer. It never redraws the strip: the host asks for that.

#include "item/tick.h"

#include "item/adapter_choice.h"
#include "item/item_state.h"
#include "item/taskbar_icon.h"
#include "trafficlog/log_file.h"
#include "wireless/signal.h"

uint32_t IncrementSince(uint32_t last, uint32_t now) {
    const auto step = static_cast<int32_t>(now - last);
    return step < 0 ? 0 : static_cast<uint32_t>(step);
}

void AdvanceRings() {
    if (itemState.sampleCount == kSampleSlots) {
        itemState.ringIndex = (itemState.ringIndex + 1) % kSampleSlots;
        itemState.ringStart = (itemState.ringStart + 1) % kSampleSlots;
    } else if (itemState.sampleCount == 0) {
        itemState.ringIndex = 0;
        itemState.ringStart = 0;
        itemState.sampleCount = 1;
    } else {
        ++itemState.ringIndex;
        ++itemState.sampleCount;
    }
}

void RunTick(HWND owner) {
    QuerySignal();
    const InterfaceCounters now = ReadInterfaceCounters();
    if (itemState.sampleCount == -1) {
        itemState.lastOutOctets = now.transmitted;
        itemState.lastInOctets = now.received;
        itemState.sampleCount = 0;
        return;
    }
    AdvanceRings();
    const uint32_t out = IncrementSince(itemState.lastOutOctets, now.transmitted);
    const uint32_t in = IncrementSince(itemState.lastInOctets, now.received);
    itemState.outDeltas[itemState.ringIndex] = out;
    itemState.inDeltas[itemState.ringIndex] = in;
    if (itemState.showTaskbarIcon) {
        DrawTaskbarIcon();
    }
    LogTraffic(owner, in, out);
    itemState.lastOutOctets = now.transmitted;
    itemState.lastInOctets = now.received;
}
