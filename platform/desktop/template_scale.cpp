// Walks through a DIALOG template (the plain kind, as a handheld knows no other): behind the header stand menu, class
// and title (each a text, a number or nothing), the font, and the controls, each aligned to four bytes.
//
// A font of double size does not give exactly doubled dialog units (12 by 25 pixels where the normal ones are 6 by 13),
// but what is painted into a dialog stands at doubled coordinates. So the template's places are stretched by what is
// missing.

#include "platform/desktop/template_scale.h"

#include "platform/scoped_gdi.h"
#include "platform/screen.h"

namespace platform {
namespace {

// Layouts of DLGTEMPLATE, its font, and DLGITEMTEMPLATE up to their variable parts.
#pragma pack(push, 2)
struct TemplateHeader {
    DWORD style;
    DWORD extendedStyle;
    WORD controls;
    short x, y, width, height;
};
struct TemplateFont {
    WORD pointSize;
    wchar_t face[1];
};
struct TemplateControl {
    DWORD style;
    DWORD extendedStyle;
    short x, y, width, height;
    WORD id;
};
#pragma pack(pop)
static_assert(sizeof(TemplateHeader) == 18 && sizeof(TemplateControl) == 18);

constexpr int kUnitsPerBase = 4;  // horizontal dialog units in the base width of a font

const WORD* SkipNameOrNumber(const WORD* field) {
    constexpr WORD kNumberFollows = 0xFFFF;
    if (*field == kNumberFollows) {
        return field + 2;
    }
    while (*field != 0) {
        ++field;
    }
    return field + 1;
}

TemplateControl* AlignedControl(const void* start, const WORD* field) {
    const auto offset = reinterpret_cast<uintptr_t>(field) - reinterpret_cast<uintptr_t>(start);
    return reinterpret_cast<TemplateControl*>(reinterpret_cast<uintptr_t>(start) + (offset + 3) / 4 * 4);
}

// Pixels of four horizontal and eight vertical dialog units, as the dialog manager takes them from a font.
SIZE BaseUnits(HDC context, const TemplateFont& font, int pointSize) {
    constexpr wchar_t kLetters[] = L"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    LOGFONTW description = {};
    description.lfHeight = -MulDiv(pointSize, GetDeviceCaps(context, LOGPIXELSY), 72);
    description.lfCharSet = DEFAULT_CHARSET;
    wcsncpy(description.lfFaceName, font.face, LF_FACESIZE - 1);
    const ScopedObject object(CreateFontIndirectW(&description));
    const ScopedSelection selection(context, object.object);
    SIZE extent = {};
    TEXTMETRICW metrics = {};
    GetTextExtentPoint32W(context, kLetters, 52, &extent);
    GetTextMetricsW(context, &metrics);
    return {(extent.cx / 26 + 1) / 2, metrics.tmHeight};
}

struct Stretch {
    SIZE wanted;
    SIZE actual;

    // Edges are stretched, not sizes, so that neighbours stay apart.
    template <class Placed>
    void Apply(Placed* placed) const {
        const int right = MulDiv(placed->x + placed->width, wanted.cx, actual.cx);
        const int bottom = MulDiv(placed->y + placed->height, wanted.cy, actual.cy);
        placed->x = static_cast<short>(MulDiv(placed->x, wanted.cx, actual.cx));
        placed->y = static_cast<short>(MulDiv(placed->y, wanted.cy, actual.cy));
        placed->width = static_cast<short>(right - placed->x);
        placed->height = static_cast<short>(bottom - placed->y);
    }
};

// Doubles the font size and tells how far that falls short.
Stretch DoubleFont(HDC context, TemplateFont* font) {
    const SIZE normal = BaseUnits(context, *font, font->pointSize);
    font->pointSize = static_cast<WORD>(font->pointSize * 2);
    const SIZE actual = BaseUnits(context, *font, font->pointSize);
    if (normal.cx <= 0 || normal.cy <= 0 || actual.cx <= 0 || actual.cy <= 0) {
        return {{1, 1}, {1, 1}};
    }
    return {{normal.cx * 2, normal.cy * 2}, actual};
}

// A dialog that would be wider than the screen gets the largest font with which it is not.
Stretch FitFont(HDC context, TemplateFont* font, int width, int room) {
    while (font->pointSize > 1 && MulDiv(width, BaseUnits(context, *font, font->pointSize).cx, kUnitsPerBase) > room) {
        --font->pointSize;
    }
    return {{1, 1}, {1, 1}};
}

// Where a dialog paints into itself only its controls can move together. It may hang out of the screen by the edges
// that it leaves bare.
Stretch NarrowControls(const Stretch& stretch, int width, int room) {
    constexpr int kBareEdge = 12;
    return {{(room + 2 * kBareEdge) * kUnitsPerBase, stretch.wanted.cy},
            {width * stretch.actual.cx, stretch.actual.cy}};
}

Stretch ScaleFont(TemplateFont* font, const TemplateHeader& header) {
    constexpr int kBorders = 3;
    const ScopedWindowContext screen(nullptr);
    const Stretch stretch = DoubleFont(screen.context, font);
    const int room = ScreenSize().cx - kBorders;
    if (MulDiv(header.width, stretch.wanted.cx, kUnitsPerBase) <= room) {
        return stretch;
    }
    const bool paintsIntoItself = (header.style & WS_CLIPCHILDREN) != 0;
    return paintsIntoItself ? NarrowControls(stretch, header.width, room)
                            : FitFont(screen.context, font, header.width, room);
}

}  // namespace

void ScaleTemplateToScreen(void* dialogTemplate) {
    auto* header = static_cast<TemplateHeader*>(dialogTemplate);
    if (!IsHighResolution(ScreenSize()) || (header->style & DS_SETFONT) == 0) {
        return;
    }
    const WORD* field = reinterpret_cast<const WORD*>(header + 1);
    for (int part = 0; part < 3; ++part) {
        field = SkipNameOrNumber(field);
    }
    auto* font = reinterpret_cast<TemplateFont*>(const_cast<WORD*>(field));
    const Stretch stretch = ScaleFont(font, *header);
    stretch.Apply(header);
    field = SkipNameOrNumber(reinterpret_cast<const WORD*>(font->face));
    for (int i = 0; i < header->controls; ++i) {
        TemplateControl* control = AlignedControl(dialogTemplate, field);
        stretch.Apply(control);
        field = SkipNameOrNumber(SkipNameOrNumber(reinterpret_cast<const WORD*>(control + 1)));
        const WORD extraBytes = *field;
        field += 1 + (extraBytes + 1) / 2;
    }
}

}  // namespace platform
