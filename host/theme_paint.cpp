// The theme is computed pixel by pixel, so that it fits every screen without a stretched picture.

#include "host/theme_paint.h"

#include "platform/scoped_gdi.h"

#include <algorithm>
#include <cmath>

namespace {

struct Color {
    double red, green, blue;
};

Color Mix(Color from, Color to, double share) {
    return {from.red + (to.red - from.red) * share, from.green + (to.green - from.green) * share,
            from.blue + (to.blue - from.blue) * share};
}

uint32_t ToPixel(Color color) {
    const auto part = [](double value) { return static_cast<uint32_t>(std::clamp(value + 0.5, 0.0, 255.0)); };
    return part(color.red) << 16 | part(color.green) << 8 | part(color.blue);
}

// A row of hills: height of the ridge as a share of the screen's height, counted from the top.
struct Ridge {
    double top;
    double swing;
    double waves;
    double phase;
    Color color;
    Color foot;
};

constexpr Ridge kRidges[] = {
    {0.66, 0.035, 1.3, 0.4, {126, 158, 190}, {150, 180, 200}},
    {0.74, 0.045, 1.9, 2.2, {84, 124, 152}, {110, 150, 164}},
    {0.84, 0.050, 1.1, 4.4, {48, 88, 108}, {30, 62, 80}},
};

Color SkyAt(double x, double y, double ratio) {
    constexpr Color kZenith = {96, 150, 206};
    constexpr Color kHorizon = {246, 232, 214};
    constexpr Color kGlow = {255, 244, 214};
    constexpr double kSunX = 0.76;
    constexpr double kSunY = 0.60;
    const Color sky = Mix(kZenith, kHorizon, std::clamp(y / 0.72, 0.0, 1.0));
    const double distance = std::hypot((x - kSunX) * ratio, y - kSunY);
    const double disc = std::clamp((0.055 - distance) * 200, 0.0, 1.0);
    return Mix(Mix(sky, kGlow, 0.7 * std::exp(-distance * 6)), {255, 252, 240}, disc);
}

// `x` and `y` run from 0 to 1, `pixel` is one pixel's height in these units (edges are smoothed over it).
Color ThemeAt(double x, double y, double ratio, double pixel) {
    constexpr double kTurn = 6.283185307179586;
    Color color = SkyAt(x, y, ratio);
    for (const Ridge& ridge : kRidges) {
        const double wave = std::sin(x * ridge.waves * kTurn + ridge.phase) +
                            0.35 * std::sin(x * ridge.waves * 2.7 * kTurn + ridge.phase * 3);
        const double below = y - (ridge.top + ridge.swing * wave);
        const double cover = std::clamp(below / pixel + 0.5, 0.0, 1.0);
        color = Mix(color, Mix(ridge.color, ridge.foot, std::clamp(below * 4, 0.0, 1.0)), cover);
    }
    return color;
}

void FillTheme(uint32_t* pixels, SIZE screen) {
    const double ratio = static_cast<double>(screen.cx) / screen.cy;
    for (int row = 0; row < screen.cy; ++row) {
        for (int column = 0; column < screen.cx; ++column) {
            *pixels++ = ToPixel(ThemeAt((column + 0.5) / screen.cx, (row + 0.5) / screen.cy, ratio, 1.0 / screen.cy));
        }
    }
}

}  // namespace

HBITMAP CreateTheme(SIZE screen) {
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = screen.cx;
    info.bmiHeader.biHeight = -screen.cy;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HBITMAP theme = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    if (theme != nullptr) {
        FillTheme(static_cast<uint32_t*>(bits), screen);
    }
    return theme;
}

void DrawTheme(HDC context, const RECT& area, HBITMAP theme, int x, int y) {
    const platform::ScopedMemoryContext memory(context);
    const platform::ScopedSelection selection(memory.context, theme);
    BitBlt(context, area.left, area.top, area.right - area.left, area.bottom - area.top, memory.context, x, y, SRCCOPY);
}

void DrawBar(HDC context, const RECT& area) {
    const LONG height = area.bottom - area.top;
    const auto part = [height](int from, int to, LONG row) {
        return static_cast<BYTE>(from + (to - from) * static_cast<int>(row) / static_cast<int>(height));
    };
    for (LONG row = 0; row < height; ++row) {
        const COLORREF color = RGB(part(GetRValue(kBarTopColor), GetRValue(kBarBottomColor), row),
                                   part(GetGValue(kBarTopColor), GetGValue(kBarBottomColor), row),
                                   part(GetBValue(kBarTopColor), GetBValue(kBarBottomColor), row));
        const RECT line = {area.left, area.top + row, area.right, area.top + row + 1};
        const platform::ScopedObject brush(CreateSolidBrush(color));
        FillRect(context, &line, static_cast<HBRUSH>(brush.object));
    }
}

void DrawLabel(HDC context, const wchar_t* text, RECT area, int height, UINT format) {
    LOGFONTW description = {};
    description.lfHeight = -height;
    description.lfWeight = FW_BOLD;
    description.lfQuality = ANTIALIASED_QUALITY;
    wcscpy(description.lfFaceName, L"Tahoma");
    const platform::ScopedObject font(CreateFontIndirectW(&description));
    const platform::ScopedSelection selection(context, font.object);
    SetBkMode(context, TRANSPARENT);
    RECT shadow = area;
    OffsetRect(&shadow, 1, 1);
    SetTextColor(context, RGB(24, 40, 62));
    DrawTextW(context, text, -1, &shadow, format | DT_SINGLELINE | DT_NOPREFIX);
    SetTextColor(context, RGB(255, 255, 255));
    DrawTextW(context, text, -1, &area, format | DT_SINGLELINE | DT_NOPREFIX);
}
