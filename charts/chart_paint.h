// charts/chart_paint.h - painting of what the charts have in common.
#pragma once

#include "charts/chart_marks.h"

// The charts' font in the face of the dialog's own texts, 12 pixels high, 22 on a high-resolution screen. Null on
// failure. The caller deletes it.
HFONT CreateChartFont(HWND dialog, HDC context);

// Stretches the module's bitmap to its area by way of `memory`, a context compatible with `context`. Nothing when a
// handle is null.
void StretchChartImage(HDC context, HDC memory, HGDIOBJ bitmap, const ChartImage& image);

// Loads and stretches it; a missing bitmap is skipped.
void DrawChartImage(HDC context, const ChartImage& image);

// `format` is DrawTextW's alignment.
void DrawChartText(HDC context, const ChartText& text, UINT format);

// One line of that pen from foot to top.
void DrawChartLine(HDC context, HPEN pen, int x, int foot, int top);
