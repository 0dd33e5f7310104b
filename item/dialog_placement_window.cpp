// Measures dialog and taskbar and moves the dialog.

#include "item/dialog_placement.h"
#include "item/item_state.h"
#include "platform/screen.h"

int TaskbarHeight() {
    constexpr int kUsualHeight = 26;
    HWND taskbar = platform::FindTaskbar();
    if (taskbar == nullptr) {
        return kUsualHeight;
    }
    RECT area = {};
    GetWindowRect(taskbar, &area);
    return area.bottom - area.top + 1;
}

void PlaceDialog(HWND dialog, Placement placement) {
    RefreshScreenSize();
    RECT area = {};
    GetWindowRect(dialog, &area);
    const DialogPlace place = ArrangeDialog(placement, area.right - area.left, area.bottom - area.top, TaskbarHeight());
    platform::MoveDialog(dialog, place.x, place.y, place.width, place.height);
}
