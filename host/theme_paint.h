// host/theme_paint.h - the Today screen's background picture and its fonts.
#pragma once

#include "platform/system.h"

// The picture behind everything: hills under an evening sky, in any size. Null on failure; the caller deletes it.
HBITMAP CreateTheme(SIZE screen);

// Copies the part of the theme at (x, y) of the screen to `area` of the context.
void DrawTheme(HDC context, const RECT& area, HBITMAP theme, int x, int y);

inline constexpr COLORREF kBarTopColor = RGB(62, 86, 118);
inline constexpr COLORREF kBarBottomColor = RGB(28, 42, 64);

// A bar's vertical gradient.
void DrawBar(HDC context, const RECT& area);

// One line of white text with a soft shadow; `format` places it as DrawTextW does. `height` is in pixels.
void DrawLabel(HDC context, const wchar_t* text, RECT area, int height, UINT format);
