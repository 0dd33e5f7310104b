// The charts' drawing calls.

#include "charts/chart_paint.h"

#include "item/item_state.h"
#include "platform/scoped_gdi.h"

#include <algorithm>

HFONT CreateChartFont(HWND dialog, HDC context) {
    constexpr int kNormalHeight = 12;
    constexpr int kHiResHeight = 22;
    // A desktop's context starts with a bitmap face that has no small sizes; the dialog's is the one that a handheld's
    // display has.
    const platform::ScopedSelection face(context, reinterpret_cast<HGDIOBJ>(SendMessageW(dialog, WM_GETFONT, 0, 0)));
    LOGFONTW font = {};
    GetTextFaceW(context, LF_FACESIZE, font.lfFaceName);
    font.lfHeight = IsHiResScreen() ? kHiResHeight : kNormalHeight;
    font.lfWeight = FW_NORMAL;
    return CreateFontIndirectW(&font);
}

void StretchChartImage(HDC context, HDC memory, HGDIOBJ bitmap, const ChartImage& image) {
    if (memory == nullptr || bitmap == nullptr) {
        return;
    }
    const int scale = ScreenScale();
    const platform::ScopedSelection selection(memory, bitmap);
    StretchBlt(context, image.x, image.y, image.width, image.height, memory, 0, 0, image.width / scale,
               image.height / scale, SRCCOPY);
}

void DrawChartImage(HDC context, const ChartImage& image) {
    const platform::ScopedObject bitmap(LoadBitmapW(itemState.instance, MAKEINTRESOURCEW(image.bitmap)));
    const platform::ScopedMemoryContext memory(context);
    StretchChartImage(context, memory.context, bitmap.object, image);
}

void DrawChartText(HDC context, const ChartText& text, UINT format) {
    RECT area = text.area;
    RECT needed = {};
    DrawTextW(context, text.text, -1, &needed, DT_CALCRECT);
    // The widest counts and labels reach a few pixels into the empty space beside their rectangles, but not out of the
    // picture.
    area.right = std::max(area.right, needed.right);
    DrawTextW(context, text.text, -1, &area, format | DT_NOCLIP);
}

void DrawChartLine(HDC context, HPEN pen, int x, int foot, int top) {
    if (pen == nullptr) {
        return;
    }
    const platform::ScopedSelection selection(context, pen);
    const POINT points[] = {{x, foot}, {x, top}};
    Polyline(context, points, 2);
}
