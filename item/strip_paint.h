// item/strip_paint.h - draws the strip.
#pragma once

#include "platform/system.h"

// The signal icon (when it changed, or with fullPaint) and the mini graph. Without the item surface the graph is
// skipped.
void DrawStatusStrip(HDC context, bool fullPaint);

// DrawStatusStrip, then the nine tool icons.
void DrawItem(HDC context, bool fullPaint);

// Creates what is missing of the item surface (then gdiReady is set) and the three pens.
void CreateDrawingResources(HWND item);
void CreatePens();

// Frees surface and pens, if the surface exists.
void DeleteDrawingResources();
