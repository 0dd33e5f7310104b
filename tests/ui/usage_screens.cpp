// Text is looked for as the system draws it.

#include "tests/ui/usage_screens.h"

#include "platform/scoped_gdi.h"

namespace ui {

bool ShowsText(HWND window, const std::wstring& text) {
    const Picture shown = TakePicture(window);
    const platform::ScopedWindowContext screen(window);
    const platform::ScopedMemoryContext memory(screen.context);
    const platform::ScopedSelection font(memory.context,
                                         reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0)));
    RECT size = {};
    DrawTextW(memory.context, text.c_str(), -1, &size, DT_CALCRECT);
    const platform::ScopedObject bitmap(CreateCompatibleBitmap(screen.context, size.right, size.bottom));
    const platform::ScopedSelection selection(memory.context, bitmap.object);
    FillRect(memory.context, &size, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    DrawTextW(memory.context, text.c_str(), -1, &size, 0);
    const auto equals = [&](int left, int top) {
        for (int y = 0; y < size.bottom; ++y) {
            for (int x = 0; x < size.right; ++x) {
                if (shown.At(left + x, top + y) != GetPixel(memory.context, x, y)) {
                    return false;
                }
            }
        }
        return true;
    };
    for (int top = 0; top + size.bottom <= shown.height; ++top) {
        for (int left = 0; left + size.right <= shown.width; ++left) {
            if (equals(left, top)) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace ui
