// charts/usage_paint.h - paints the usage view.
#pragma once

#include "charts/usage_view.h"

// Header icons, then chart or table, into the dialog's context. Missing images are skipped; nothing is read but the
// view.
void PaintUsage(HWND dialog, HDC context, const UsageView& view);
