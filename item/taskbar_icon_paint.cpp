// Paints the status icon onto the screen. The square under it is compared with the last snapshot on every tick, so that
// whatever the shell drew there meanwhile becomes the new background.

#include "item/item_state.h"
#include "item/taskbar_icon.h"
#include "platform/icons.h"
#include "platform/scoped_gdi.h"
#include "platform/screen.h"

namespace {

struct ScopedScreen {
    HDC context = platform::GetScreenContext();

    ScopedScreen() = default;
    ScopedScreen(const ScopedScreen&) = delete;
    ScopedScreen& operator=(const ScopedScreen&) = delete;
    ~ScopedScreen() {
        if (context != nullptr) {
            platform::ReleaseScreenContext(context);
        }
    }
};

int IconLeft() {
    return static_cast<int>(itemState.xLocation);
}

void CopyFromScreen(HDC memory, HDC screen) {
    const int side = TaskbarIconSide();
    BitBlt(memory, 0, 0, side, side, screen, IconLeft(), TaskbarIconTop(), SRCCOPY);
}

void CopyToScreen(HDC screen, HDC memory) {
    const int side = TaskbarIconSide();
    BitBlt(screen, IconLeft(), TaskbarIconTop(), side, side, memory, 0, 0, SRCCOPY);
}

bool EqualsScreen(HDC memory, HDC screen) {
    const int side = TaskbarIconSide();
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            if (GetPixel(screen, IconLeft() + column, TaskbarIconTop() + row) != GetPixel(memory, column, row)) {
                return false;
            }
        }
    }
    return true;
}

// Takes a snapshot of the square under the icon, or puts the last one back where the screen still shows it.
void RefreshIconBackground(HDC screen) {
    const platform::ScopedMemoryContext memory(screen);
    if (memory.context == nullptr) {
        return;
    }
    if (itemState.iconBackground == nullptr) {
        const int side = TaskbarIconSide();
        itemState.iconBackground = CreateCompatibleBitmap(screen, side, side);
        const platform::ScopedSelection selection(memory.context, itemState.iconBackground);
        CopyFromScreen(memory.context, screen);
        return;
    }
    const platform::ScopedSelection selection(memory.context, itemState.iconBackground);
    if (EqualsScreen(memory.context, screen)) {
        CopyToScreen(screen, memory.context);
    } else {
        CopyFromScreen(memory.context, screen);
    }
}

}  // namespace

void DrawTaskbarIcon() {
    const ScopedScreen screen;
    if (screen.context == nullptr) {
        return;
    }
    RefreshIconBackground(screen.context);
    platform::DrawModuleIcon(screen.context, itemState.instance, TaskbarIconId(), IconLeft(), TaskbarIconTop());
}

void CaptureTaskbarBackground() {
    const ScopedScreen screen;
    const platform::ScopedMemoryContext memory(screen.context);
    if (screen.context == nullptr || memory.context == nullptr) {
        return;
    }
    const int side = TaskbarIconSide();
    itemState.taskbarBackground = CreateCompatibleBitmap(screen.context, side, side);
    const platform::ScopedSelection selection(memory.context, itemState.taskbarBackground);
    CopyFromScreen(memory.context, screen.context);
}

void RestoreUnderIcon(HBITMAP background) {
    if (background == nullptr) {
        return;
    }
    const ScopedScreen screen;
    const platform::ScopedMemoryContext memory(screen.context);
    if (screen.context == nullptr || memory.context == nullptr) {
        return;
    }
    const platform::ScopedSelection selection(memory.context, background);
    CopyToScreen(screen.context, memory.context);
}
