// item/item_state.h - the single global state record of the Today item, shared by every subsystem.
//
// It owns every handle that it holds; they are created and destroyed only by the item window's cache messages and by
// the tick's taskbar icon. Everything here belongs to the Today screen's user-interface thread.
#pragma once

#include "platform/system.h"

inline constexpr int kSampleSlots = 20;
inline constexpr int kSignalReadings = 40;
inline constexpr int32_t kNoSignal = -200;  // dBm
inline constexpr uint32_t kUnknownInterface = 0xFFFFFFFF;
inline constexpr size_t kAdapterNameUnits = 128;
inline constexpr size_t kPathUnits = 260;

struct ItemState {
    HINSTANCE instance;  // for every resource load
    int32_t screenWidth;
    int32_t screenHeight;

    uint32_t xLocation;  // of the taskbar icon, screen pixels, 0 to 639
    bool showTaskbarIcon;
    bool amPmFormat;
    wchar_t adapterName[kAdapterNameUnits];
    uint32_t interfaceIndex;         // kUnknownInterface until the first tick
    wchar_t dataFolder[kPathUnits];  // logs and lists, without a trailing separator

    int32_t sampleCount;               // -1 before the first tick, 0 after it, then 1 to 20
    int32_t ringIndex;                 // the newest entry
    int32_t ringStart;                 // the oldest entry once the rings are full
    uint32_t outDeltas[kSampleSlots];  // bytes transmitted per tick
    uint32_t inDeltas[kSampleSlots];   // bytes received per tick
    uint32_t lastOutOctets;
    uint32_t lastInOctets;

    int32_t SignalDbm;  // kNoSignal when there is none
    int32_t lastDrawnSignal;
    int32_t SignalHistory[kSignalReadings];  // oldest first
    bool WirelessSeen;
    uint32_t WirelessSinceTick;  // ms, when the adapter was first seen after having been absent
    uint32_t WirelessLostValue;  // set when the adapter disappears

    bool timerRunning;
    bool gdiReady;  // the surface exists
    HDC surfaceContext;
    HBITMAP surfaceBitmap;
    HGDIOBJ surfacePrevious;    // what the surface's context held before its bitmap
    HPEN redPen;                // transmitted
    HPEN bluePen;               // received
    HPEN silverPen;             // baseline
    HBITMAP taskbarBackground;  // the clean screen under the taskbar icon
    HBITMAP iconBackground;     // the screen under it as the tick last saw it
};

extern ItemState itemState;

// Start values of the state before settings are read: no samples, no signal, unknown interface, no handle.
void ResetItemState();

// Rereads the screen's size into the state.
void RefreshScreenSize();

// True when the recorded width or height exceeds 320 pixels; drawing coordinates are then doubled.
bool IsHiResScreen();

// 2 on a high-resolution screen, else 1.
int ScreenScale();

// Rereads the screen's size; true when the width is at least the height. It chooses the landscape templates.
bool IsLandscape();
