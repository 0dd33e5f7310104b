// A desktop's LoadIconW stretches every icon to the system's icon size; loading without a wanted size keeps its own.

#include "platform/icons.h"

namespace platform {

HICON LoadModuleIcon(HINSTANCE instance, int icon) {
    return static_cast<HICON>(LoadImageW(instance, MAKEINTRESOURCEW(icon), IMAGE_ICON, 0, 0, 0));
}

void DrawModuleIcon(HDC context, HINSTANCE instance, int icon, int x, int y) {
    if (HICON loaded = LoadModuleIcon(instance, icon)) {
        DrawIconEx(context, x, y, loaded, 0, 0, 0, nullptr, DI_NORMAL);
        DestroyIcon(loaded);
    }
}

}  // namespace platform
