// Unit tests have no screen to paint on.

#include "item/taskbar_icon.h"

void DrawTaskbarIcon() {}
