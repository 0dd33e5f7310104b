// The frame's parts from back to front.

#include "host/frame_paint.h"

#include "host/theme_paint.h"
#include "host/today_screen.h"

namespace {

constexpr int kTextHeight = 11;

void DrawDate(HDC context, const ScreenLayout& layout) {
    wchar_t date[80] = {};
    GetDateFormatW(LOCALE_USER_DEFAULT, DATE_LONGDATE, nullptr, nullptr, date, 80);
    RECT area = layout.date;
    area.left += 6 * layout.scale;
    DrawLabel(context, date, area, kTextHeight * layout.scale, DT_LEFT | DT_VCENTER);
    if (today.options.demo) {
        area.right -= 6 * layout.scale;
        DrawLabel(context, L"Demo", area, kTextHeight * layout.scale, DT_RIGHT | DT_VCENTER);
    }
}

void DrawSoftKeys(HDC context, const ScreenLayout& layout) {
    DrawBar(context, layout.bar);
    const UINT format = DT_CENTER | DT_VCENTER;
    DrawLabel(context, L"Options", layout.leftKey, kTextHeight * layout.scale, format);
    DrawLabel(context, L"Menu", layout.rightKey, kTextHeight * layout.scale, format);
}

}  // namespace

void PaintFrame(HWND frame) {
    PAINTSTRUCT paint;
    HDC context = BeginPaint(frame, &paint);
    const SIZE screen = today.options.screen;
    DrawTheme(context, {0, 0, screen.cx, screen.cy}, today.theme, 0, 0);
    const ScreenLayout layout = CurrentLayout();
    DrawDate(context, layout);
    DrawSoftKeys(context, layout);
    EndPaint(frame, &paint);
}

void DrawWatermark(const TODAYDRAWWATERMARKINFO& request) {
    POINT corner = {request.rc.left, request.rc.top};
    MapWindowPoints(request.hwnd, today.frame, &corner, 1);
    DrawTheme(request.hdc, request.rc, today.theme, corner.x, corner.y);
}
