// platform/desktop/template_scale.h - dialog templates at the screen's scale.
#pragma once

#include "platform/system.h"

namespace platform {

// Whether a screen of that size is a high-resolution one.
inline bool IsHighResolution(SIZE screen) {
    constexpr int kLargestNormalSide = 320;
    return screen.cx > kLargestNormalSide || screen.cy > kLargestNormalSide;
}

// Doubles the font size of a DIALOG template in writable memory when the screen is a high-resolution one. A dialog that
// would be wider than that screen (the landscape ones on a square of 480 pixels) is made to fit.
void ScaleTemplateToScreen(void* dialogTemplate);

}  // namespace platform
