// platform/icons.h - icons of the module in their natural size, whatever the system's standard icon size is.
#pragma once

#include "platform/system.h"

namespace platform {

// The icon of that resource number, or null. The caller destroys it.
HICON LoadModuleIcon(HINSTANCE instance, int icon);

// Draws the icon with its mask at (x, y); a missing one is skipped.
void DrawModuleIcon(HDC context, HINSTANCE instance, int icon, int x, int y);

}  // namespace platform
