// A desktop's LoadIconW stretches every icon to the system's icon size; loading without a wanted size keeps its own.
// What is drawn again and again is loaded shared, which the system keeps until the module goes: Wine 8 loses 96 bytes
// with every other icon that is loaded and destroyed, with one a tick some megabytes a day.

#include "platform/icons.h"

namespace platform {

HICON LoadModuleIcon(HINSTANCE instance, int icon) {
    return static_cast<HICON>(LoadImageW(instance, MAKEINTRESOURCEW(icon), IMAGE_ICON, 0, 0, 0));
}

void DrawModuleIcon(HDC context, HINSTANCE instance, int icon, int x, int y) {
    if (HANDLE loaded = LoadImageW(instance, MAKEINTRESOURCEW(icon), IMAGE_ICON, 0, 0, LR_SHARED)) {
        DrawIconEx(context, x, y, static_cast<HICON>(loaded), 0, 0, 0, nullptr, DI_NORMAL);
    }
}

}  // namespace platform
