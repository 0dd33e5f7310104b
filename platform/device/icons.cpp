// The handheld's LoadIconW keeps an icon's own size, unlike a desktop's.

#include "platform/icons.h"

namespace platform {

HICON LoadModuleIcon(HINSTANCE instance, int icon) {
    return LoadIconW(instance, MAKEINTRESOURCEW(icon));
}

void DrawModuleIcon(HDC context, HINSTANCE instance, int icon, int x, int y) {
    if (HICON loaded = LoadModuleIcon(instance, icon)) {
        DrawIconEx(context, x, y, loaded, 0, 0, 0, nullptr, DI_NORMAL);
        DestroyIcon(loaded);
    }
}

}  // namespace platform
