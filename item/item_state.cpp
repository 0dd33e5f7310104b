// The state record itself and what is derived from the recorded screen size.

#include "item/item_state.h"

#include "platform/screen.h"

#include <algorithm>

ItemState itemState;

void ResetItemState() {
    const HINSTANCE instance = itemState.instance;
    itemState = {};
    itemState.instance = instance;
    itemState.interfaceIndex = kUnknownInterface;
    itemState.sampleCount = -1;
    itemState.ringIndex = -1;
    itemState.ringStart = -1;
    itemState.SignalDbm = kNoSignal;
    itemState.lastDrawnSignal = kNoSignal;
    std::fill_n(itemState.SignalHistory, kSignalReadings, kNoSignal);
    itemState.WirelessLostValue = 0xFFFFFFFF;
}

void RefreshScreenSize() {
    const SIZE size = platform::ScreenSize();
    itemState.screenWidth = size.cx;
    itemState.screenHeight = size.cy;
}

bool IsHiResScreen() {
    constexpr int kLargestNormalSide = 320;
    return itemState.screenWidth > kLargestNormalSide || itemState.screenHeight > kLargestNormalSide;
}

int ScreenScale() {
    return IsHiResScreen() ? 2 : 1;
}

bool IsLandscape() {
    RefreshScreenSize();
    return itemState.screenWidth >= itemState.screenHeight;
}
