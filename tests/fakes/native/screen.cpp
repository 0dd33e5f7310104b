// The screen of native tests has a size and nothing to draw on.
#include "platform/screen.h"
#include "item/taskbar_icon.h"
#include "tests/fakes/scripted_platform.h"

SIZE platform::ScreenSize() {
    return scripted::system.screen;
}

void DrawTaskbarIcon() {}
