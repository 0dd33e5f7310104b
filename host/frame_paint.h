// host/frame_paint.h - what the frame itself shows: theme, date, soft keys.
#pragma once

#include "platform/today.h"

void PaintFrame(HWND frame);

// Draws the part of the theme that lies behind the requesting window.
void DrawWatermark(const TODAYDRAWWATERMARKINFO& request);
