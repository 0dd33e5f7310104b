// Finds the font size in a DIALOGEX template: behind menu, class and title, each a text, a number or nothing.

#include "platform/desktop/template_scale.h"

#include "platform/screen.h"

namespace platform {
namespace {

// Layout of DLGTEMPLATEEX up to its variable part.
#pragma pack(push, 2)
struct TemplateHeader {
    WORD version;
    WORD signature;
    DWORD helpId;
    DWORD extendedStyle;
    DWORD style;
    WORD controls;
    short x, y, width, height;
};
#pragma pack(pop)
static_assert(sizeof(TemplateHeader) == 26);

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

}  // namespace

void ScaleTemplateToScreen(void* dialogTemplate) {
    constexpr int kLargestNormalSide = 320;
    constexpr WORD kExtendedSignature = 0xFFFF;
    const SIZE screen = ScreenSize();
    auto* header = static_cast<TemplateHeader*>(dialogTemplate);
    if ((screen.cx <= kLargestNormalSide && screen.cy <= kLargestNormalSide) ||
        header->signature != kExtendedSignature || (header->style & DS_SETFONT) == 0) {
        return;
    }
    const WORD* field = reinterpret_cast<const WORD*>(header + 1);
    for (int part = 0; part < 3; ++part) {
        field = SkipNameOrNumber(field);
    }
    auto* pointSize = const_cast<WORD*>(field);
    *pointSize = static_cast<WORD>(*pointSize * 2);
}

}  // namespace platform
