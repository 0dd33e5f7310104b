// item/tap_dispatch.h - what a tap on the strip opens.
#pragma once

#include "platform/system.h"

inline constexpr int kNoTool = 0;

// A tool: a dialog template (and its landscape variant, if it has one) or a control-panel applet.
struct Tool {
    int templateId;   // kNoTool for an applet
    int landscapeId;  // kNoTool when the one template serves both orientations
    const wchar_t* applet;
};

// The tool whose icon holds the point, or null. x and y are client pixels of the strip.
const Tool* FindToolAt(uint32_t x, uint32_t y);

// Whether the point lies on the mini graph.
bool IsOnMiniGraph(uint32_t x, uint32_t y);

// Opens what the tap hit, modally over the item window; an applet is started and not waited for.
void DispatchTap(HWND item, uint32_t x, uint32_t y);
